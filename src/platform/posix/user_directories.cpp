#include "platform/posix/user_directories.h"

#include "platform/posix/drive_paths.h"

#include <glib.h>

namespace larkspin {

std::string userDataHome() {
    std::string home = g_get_user_data_dir();
    if (!g_path_is_absolute(home.c_str())) // such a setting doesn't count
        home = std::string(g_get_home_dir()) + "/.local/share";
    return home;
}

std::string userDataDirectory() {
    return drivePath(userDataHome()) + "\\larkspin";
}

std::string userMusicDirectory() {
    const char* const music = g_get_user_special_dir(G_USER_DIRECTORY_MUSIC);
    const std::string usual = std::string(g_get_home_dir()) + "/Music";
    if (!music && !g_file_test(usual.c_str(), G_FILE_TEST_IS_DIR))
        return {};
    return drivePath(music ? music : usual);
}

std::string typedPath(const std::string& path) {
    const std::string native = nativePath(path), home = nativePath(drivePath(g_get_home_dir()));
    const bool isInHome =
        native.starts_with(home) && (native.size() == home.size() || native[home.size()] == '/');
    return isInHome && home != "/" ? '~' + native.substr(home.size()) : native;
}

std::string loginName() {
    return g_get_user_name();
}

} // namespace larkspin
