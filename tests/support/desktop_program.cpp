#include "support/desktop_program.h"

#include <thread>

namespace larkspin {

using namespace std::chrono_literals;

std::unique_ptr<Child> DesktopProgram::start(const std::string& display) const {
    const std::string home = disk.path().native();
    std::vector<std::string> variables = {"HOME=" + home,
                                          "XDG_DATA_HOME=" + home,
                                          "XDG_CONFIG_HOME=" + home,
                                          "XDG_RUNTIME_DIR=" + home,
                                          "PULSE_SERVER=none",
                                          "PIPEWIRE_REMOTE=none",
                                          "ALSA_CONFIG_PATH=/dev/null",
                                          "DBUS_SESSION_BUS_ADDRESS=" + bus,
                                          "DBUS_SYSTEM_BUS_ADDRESS=unix:path=/nonexistent",
                                          "LSAN_OPTIONS=detect_leaks=0",
                                          "WAYLAND_DISPLAY=",
                                          "QT_QPA_PLATFORM=",
                                          "QT_QPA_PLATFORMTHEME=",
                                          "DISPLAY=" + display};
    variables.insert(variables.end(), also.begin(), also.end());
    return Child::start("sh", variables, {"-c", "exec " LARKSPIN_DESKTOP " 2>&1"});
}

std::unique_ptr<Child> DesktopProgram::welcomed() const {
    auto child = start(server->display());
    turnTo("^larkspin$");
    press({"Return"});
    return child;
}

void DesktopProgram::turnTo(const std::string& title) const {
    EXPECT_TRUE(sees(title));
    EXPECT_TRUE(
        server->hand({"search", "--onlyvisible", "--name", title, "windowfocus", "--sync", "%1"}));
}

void DesktopProgram::press(std::initializer_list<const char*> keys) const {
    std::vector<std::string> does = {"key"};
    does.insert(does.end(), keys.begin(), keys.end());
    EXPECT_TRUE(server->hand(does));
}

bool DesktopProgram::comes(const std::function<bool()>& condition) {
    const auto until = std::chrono::steady_clock::now() + patience;
    while (!condition() && std::chrono::steady_clock::now() < until)
        std::this_thread::sleep_for(50ms);
    return condition();
}

} // namespace larkspin
