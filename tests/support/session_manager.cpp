#include "support/session_manager.h"

#include <X11/SM/SMlib.h>
#include <cstdlib>
#include <poll.h>

namespace larkspin {

struct SessionManager::Parts {
    int count = 0;
    IceListenObj* listeners = nullptr;
    IceConn connection = nullptr;
    SmsConn client = nullptr;
    bool isRegistered = false;
    int saves = 0;
};

namespace {

bool isReadable(int descriptor) {
    pollfd readable{descriptor, POLLIN, 0};
    return ::poll(&readable, 1, 0) > 0;
}

} // namespace

// What the library wants to be heard: all that there is.
SessionManager::SessionManager() : parts_(std::make_unique<Parts>()) {
    const auto take = [](SmsConn client, SmPointer parts, unsigned long* mask, SmsCallbacks* calls,
                         char**) -> Status {
        static_cast<Parts*>(parts)->client = client;
        *mask = (SmsGetPropertiesProcMask << 1) - 1;
        calls->register_client.manager_data = parts;
        calls->register_client.callback = [](SmsConn whom, SmPointer whose, char* id) -> Status {
            std::free(id);
            static_cast<Parts*>(whose)->isRegistered = true;
            return SmsRegisterClientReply(whom, const_cast<char*>("1"));
        };
        calls->interact_request.callback = [](SmsConn, SmPointer, int) {};
        calls->interact_done.callback = [](SmsConn, SmPointer, Bool) {};
        calls->save_yourself_request.callback = [](SmsConn, SmPointer, int, Bool, int, Bool, Bool) {
        };
        calls->save_yourself_phase2_request.callback = [](SmsConn whose, SmPointer) {
            SmsSaveYourselfPhase2(whose);
        };
        calls->save_yourself_done.manager_data = parts;
        calls->save_yourself_done.callback = [](SmsConn, SmPointer whose, Bool) {
            ++static_cast<Parts*>(whose)->saves;
        };
        calls->close_connection.callback = [](SmsConn, SmPointer, int count, char** reasons) {
            SmFreeReasons(count, reasons);
        };
        calls->set_properties.callback = [](SmsConn, SmPointer, int count, SmProp** properties) {
            for (int at = 0; at < count; ++at)
                SmFreeProperty(properties[at]);
            std::free(properties);
        };
        calls->delete_properties.callback = [](SmsConn, SmPointer, int count, char** names) {
            SmFreeReasons(count, names);
        };
        calls->get_properties.callback = [](SmsConn, SmPointer) {};
        return 1;
    };
    const auto letIn = [](char*) -> Bool { return True; };
    char error[256] = "";
    SmsInitialize("test", "1", take, parts_.get(), letIn, sizeof error, error);
    IceListenForConnections(&parts_->count, &parts_->listeners, sizeof error, error);
    for (int at = 0; at < parts_->count; ++at)
        IceSetHostBasedAuthProc(parts_->listeners[at], letIn);
    IceSetIOErrorHandler([](IceConn) {}); // the client ends
}

SessionManager::~SessionManager() {
    if (parts_->client)
        SmsCleanUp(parts_->client);
    if (parts_->connection) {
        IceSetShutdownNegotiation(parts_->connection, False);
        IceCloseConnection(parts_->connection);
    }
    IceFreeListenObjs(parts_->count, parts_->listeners);
}

std::string SessionManager::address() const {
    char* const list = IceComposeNetworkIdList(parts_->count, parts_->listeners);
    std::string address = list ? list : "";
    std::free(list);
    return address;
}

bool SessionManager::hearsOf(int saves) {
    IceAcceptStatus status{};
    for (int at = 0; at < parts_->count && !parts_->connection; ++at)
        if (isReadable(IceGetListenConnectionNumber(parts_->listeners[at])))
            parts_->connection = IceAcceptConnection(parts_->listeners[at], &status);
    while (parts_->connection && isReadable(IceConnectionNumber(parts_->connection)))
        if (IceProcessMessages(parts_->connection, nullptr, nullptr) != IceProcessMessagesSuccess)
            return false;
    return parts_->isRegistered && parts_->saves >= saves;
}

void SessionManager::askToSave() const {
    SmsSaveYourself(parts_->client, SmSaveBoth, True, SmInteractStyleNone, False);
}

void SessionManager::end() const {
    SmsDie(parts_->client);
}

} // namespace larkspin
