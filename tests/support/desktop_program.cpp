#include "support/desktop_program.h"

namespace larkspin {

std::unique_ptr<Child> DesktopProgram::start(const std::string& display) const {
    std::vector<std::string> variables = ownHome(disk.path().native());
    for (const std::string& more :
         {"XDG_CONFIG_HOME=" + disk.path().native(), "DBUS_SESSION_BUS_ADDRESS=" + bus,
          "DISPLAY=" + display, std::string("WAYLAND_DISPLAY="), std::string("QT_QPA_PLATFORM="),
          std::string("QT_QPA_PLATFORMTHEME=")})
        variables.push_back(more);
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

} // namespace larkspin
