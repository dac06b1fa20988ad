// A desktop's session manager, pretended (XSMP): it asks its one client to save, and ends it.
#pragma once

#include <memory>
#include <string>

namespace larkspin {

class SessionManager {
public:
    SessionManager();
    ~SessionManager();

    std::string address() const; // for the client's SESSION_MANAGER
    // Hears what the client has to say, which it waits for as it starts. Whether it has come, and
    // has saved so many times.
    bool hearsOf(int saves);
    void askToSave() const;
    void end() const;

private:
    struct Parts; // the library's names go badly with others
    const std::unique_ptr<Parts> parts_;
};

} // namespace larkspin
