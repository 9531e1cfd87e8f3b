#include "headless/Processes.h"

#if defined(__linux__)

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace zel {

namespace {

/// One byte to send, and room for two descriptors beside it.
class Message {
public:
    Message() {
        m_header.msg_iov = &m_content;
        m_header.msg_iovlen = 1;
        m_header.msg_control = m_room;
        m_header.msg_controllen = sizeof m_room;
    }
    Message(const Message&) = delete;
    Message& operator=(const Message&) = delete;

    msghdr* Header() { return &m_header; }

    void Put(const int (&numbers)[2]) {
        cmsghdr* beside = CMSG_FIRSTHDR(&m_header);
        beside->cmsg_level = SOL_SOCKET;
        beside->cmsg_type = SCM_RIGHTS;
        beside->cmsg_len = CMSG_LEN(sizeof numbers);
        std::memcpy(CMSG_DATA(beside), numbers, sizeof numbers);
    }

    bool Get(int (&numbers)[2]) {
        const cmsghdr* beside = CMSG_FIRSTHDR(&m_header);
        if (!beside || beside->cmsg_len != CMSG_LEN(sizeof numbers)) return false;
        std::memcpy(numbers, CMSG_DATA(beside), sizeof numbers);
        return true;
    }

private:
    char m_byte = 0;
    iovec m_content{&m_byte, 1};
    alignas(cmsghdr) char m_room[CMSG_SPACE(2 * sizeof(int))] = {};
    msghdr m_header{};
};

/// Repeats a call that a signal interrupted.
template <class Call>
auto Uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

}  // namespace

void Descriptor::Close() {
    if (IsOpen()) close(std::exchange(m_number, -1));
}

Ends Pipe() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return {};
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

Ends Socket() {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return {};
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

bool WriteAll(int to, const void* data, std::size_t bytes) {
    for (const char* p = static_cast<const char*>(data); bytes > 0;) {
        const ssize_t done = Uninterrupted([&] { return write(to, p, bytes); });
        if (done <= 0) return false;
        p += done;
        bytes -= static_cast<std::size_t>(done);
    }
    return true;
}

bool ReadAll(int from, void* data, std::size_t bytes) {
    for (char* p = static_cast<char*>(data); bytes > 0;) {
        const ssize_t done = Uninterrupted([&] { return read(from, p, bytes); });
        if (done <= 0) return false;
        p += done;
        bytes -= static_cast<std::size_t>(done);
    }
    return true;
}

bool SendDescriptors(int to, int first, int second) {
    Message message;
    message.Put({first, second});
    return Uninterrupted([&] { return sendmsg(to, message.Header(), MSG_NOSIGNAL); }) == 1;
}

bool ReceiveDescriptors(int from, Descriptor& first, Descriptor& second) {
    Message message;
    const auto received =
        Uninterrupted([&] { return recvmsg(from, message.Header(), MSG_CMSG_CLOEXEC); });
    int numbers[2];
    if (received != 1 || !message.Get(numbers)) return false;
    first = Descriptor(numbers[0]);
    second = Descriptor(numbers[1]);
    return true;
}

bool Readable(int descriptor, std::chrono::seconds limit) {
    using Clock = std::chrono::steady_clock;
    using std::chrono::milliseconds;
    const auto until = Clock::now() + limit;
    for (;;) {
        const auto left = std::chrono::ceil<milliseconds>(until - Clock::now());
        const auto wait = std::clamp<milliseconds>(left, milliseconds(0), std::chrono::hours(1));
        pollfd watched{descriptor, POLLIN, 0};
        const int ready = poll(&watched, 1, static_cast<int>(wait.count()));
        if (ready > 0) return true;
        if (left <= milliseconds(0)) return false;
    }
}

Ending AwaitEnd(int process, int held, std::chrono::seconds limit) {
    Ending ending;
    ending.timedOut = !Readable(held, limit);
    if (ending.timedOut) kill(process, SIGKILL);
    Uninterrupted([&] { return waitpid(process, &ending.status, 0); });
    return ending;
}

const char* SignalName(int signal) {
    constexpr struct {
        int number;
        const char* name;
    } kSignals[] = {
        {SIGABRT, "SIGABRT"}, {SIGBUS, "SIGBUS"},   {SIGFPE, "SIGFPE"},   {SIGILL, "SIGILL"},
        {SIGKILL, "SIGKILL"}, {SIGSEGV, "SIGSEGV"}, {SIGSYS, "SIGSYS"},   {SIGTERM, "SIGTERM"},
        {SIGTRAP, "SIGTRAP"}, {SIGXCPU, "SIGXCPU"}, {SIGXFSZ, "SIGXFSZ"}, {SIGPIPE, "SIGPIPE"},
    };
    const auto* found = std::ranges::find_if(kSignals, [=](auto& s) { return s.number == signal; });
    return found == std::end(kSignals) ? "another signal" : found->name;
}

}  // namespace zel

#endif
