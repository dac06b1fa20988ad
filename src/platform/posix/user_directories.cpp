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
    return music ? drivePath(music) : "";
}

std::string loginName() {
    return g_get_user_name();
}

} // namespace larkspin
