#include "platform/posix/passed_file.h"

#include <cerrno>
#include <cstring>
#include <sys/socket.h>

namespace larkspin {

namespace {

struct Attachment {
    alignas(cmsghdr) char bytes[CMSG_SPACE(sizeof(int))] = {};
};

} // namespace

ssize_t sendWithFile(int channel, std::string_view bytes, const Descriptor* file) {
    iovec content{const_cast<char*>(bytes.data()), bytes.size()};
    msghdr message{};
    message.msg_iov = &content;
    message.msg_iovlen = 1;
    Attachment attachment;
    if (file) {
        message.msg_control = attachment.bytes;
        message.msg_controllen = sizeof attachment.bytes;
        cmsghdr* const head = CMSG_FIRSTHDR(&message);
        head->cmsg_level = SOL_SOCKET;
        head->cmsg_type = SCM_RIGHTS;
        head->cmsg_len = CMSG_LEN(sizeof(int));
        const int number = file->number();
        std::memcpy(CMSG_DATA(head), &number, sizeof number);
    }
    return ::sendmsg(channel, &message, MSG_DONTWAIT | MSG_NOSIGNAL);
}

ssize_t receiveWithFile(int channel, std::span<char> bytes, Descriptor& file) {
    iovec content{bytes.data(), bytes.size()};
    Attachment attachment;
    msghdr message{};
    message.msg_iov = &content;
    message.msg_iovlen = 1;
    message.msg_control = attachment.bytes;
    message.msg_controllen = sizeof attachment.bytes;
    const ssize_t got = ::recvmsg(channel, &message, MSG_DONTWAIT | MSG_CMSG_CLOEXEC);
    if (got >= 0 && (message.msg_flags & MSG_CTRUNC) != 0) {
        // The file got lost: this process has no descriptor free for it.
        errno = EMFILE;
        return -1;
    }
    const cmsghdr* const head = got < 0 ? nullptr : CMSG_FIRSTHDR(&message);
    if (head && head->cmsg_level == SOL_SOCKET && head->cmsg_type == SCM_RIGHTS) {
        int number = -1;
        std::memcpy(&number, CMSG_DATA(head), sizeof number);
        file = Descriptor(number);
    }
    return got;
}

} // namespace larkspin
