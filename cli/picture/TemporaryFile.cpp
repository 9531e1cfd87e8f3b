#include "cli/picture/TemporaryFile.h"

#include "headless/Error.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <random>
#include <string>
#include <string_view>
#include <system_error>

#if !defined(_WIN32)
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace zel {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kPrefix = ".zelfx-";
constexpr std::string_view kLetters = "0123456789abcdefghijklmnopqrstuvwxyz";

/// Differs between processes and calls.
std::string UniqueWord() {
    std::random_device device;  // one for each thread would need memory that cannot be refused
    std::string word;
    for (int i = 0; i < 10; ++i) word += kLetters[device() % kLetters.size()];
    return word;
}

[[noreturn]] void FailToWrite(const fs::path& target, const std::string& why) {
    throw Error(ErrorKind::Other, "cannot write '" + target.string() + "': " + why);
}

#if defined(_WIN32)

std::string MachineWord() { return "windows"; }

int CreateLocked(const fs::path& file) {
    errno = 0;
    if (!std::ofstream(file)) throw std::system_error(errno, std::generic_category());
    return -1;
}

void CloseLock(int) {}

#else

/// Differs between machines, as far as their names do: FNV-1a of the name.
std::string MachineWord() {
    std::array<char, 256> name{};
    gethostname(name.data(), name.size() - 1);
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char* c = name.data(); *c; ++c)
        hash = (hash ^ static_cast<unsigned char>(*c)) * 0x100000001b3;
    std::string word;
    for (int i = 0; i < 8; ++i, hash /= kLetters.size()) word += kLetters[hash % kLetters.size()];
    return word;
}

/// A new file, open and locked. Throws std::system_error.
int CreateLocked(const fs::path& file) {
    for (;;) {
        const int fd = open(file.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd < 0) throw std::system_error(errno, std::generic_category());
        // Where a disk knows no locks, none can be found free either.
        if (flock(fd, LOCK_EX) != 0) return fd;
        // Between the two calls another run may have taken it for a dead one's.
        struct stat facts {};
        if (fstat(fd, &facts) == 0 && facts.st_nlink > 0) return fd;
        close(fd);
    }
}

void CloseLock(int fd) {
    if (fd >= 0) close(fd);
}

#endif

/// What a signal handler may look at: names in memory that is always there. Runs with
/// more files at a time leave the others to RemoveDeadTemporaryFiles().
struct Slot {
    enum State { Free, Changing, Named };
    std::atomic<State> state = Free;
    std::array<char, 4096> name;
};
std::array<Slot, 300> slots;

/// True from when a signal has begun to remove what there is until the program has ended.
std::atomic<bool> ending = false;

/// Not a new file behind the back of the thread that removes them all.
void StopIfEnding() {
#if !defined(_WIN32)
    while (ending) pause();
#endif
}

int Remember(const fs::path& file) {
    const std::string name = file.string();
    if (name.size() >= slots[0].name.size()) return -1;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        Slot::State expected = Slot::Free;
        if (!slots[i].state.compare_exchange_strong(expected, Slot::Changing)) continue;
        std::memcpy(slots[i].name.data(), name.c_str(), name.size() + 1);
        slots[i].state = Slot::Named;
        return static_cast<int>(i);
    }
    return -1;
}

}  // namespace

TemporaryFile::TemporaryFile(const fs::path& target) : m_target(target) {
    std::error_code ignored;
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    if (!fs::is_directory(folder, ignored))
        FailToWrite(target, "there is no folder '" + folder.string() + "'");
    if (fs::is_directory(target, ignored)) FailToWrite(target, "it is a folder; name a file in it");
    // Not after the target: its name may be as long as names can be.
    m_path = folder / (std::string(kPrefix) + MachineWord() + '-' + UniqueWord() +
                       target.extension().string());
    StopIfEnding();
    m_slot = Remember(m_path);
    try {
        m_lock = CreateLocked(m_path);
    } catch (const std::system_error& e) {
        Close();
        FailToWrite(target, std::strerror(e.code().value()));
    }
    if (ending) fs::remove(m_path, ignored);
    StopIfEnding();
}

TemporaryFile::~TemporaryFile() {
    std::error_code ignored;
    if (!m_path.empty()) fs::remove(m_path, ignored);
    Close();
}

void TemporaryFile::Commit(Safety safety) {
#if !defined(_WIN32)
    if (safety == OnDisk && m_lock >= 0 && fsync(m_lock) != 0)
        FailToWrite(m_target, std::strerror(errno));
#else
    (void)safety;
#endif
    std::error_code error;
    fs::rename(m_path, m_target, error);
    if (error) FailToWrite(m_target, error.message());
    m_path.clear();
    Close();
}

void TemporaryFile::Close() {
    if (m_slot >= 0) slots[static_cast<std::size_t>(m_slot)].state = Slot::Free;
    CloseLock(m_lock);
    m_slot = m_lock = -1;
}

std::size_t RemoveDeadTemporaryFiles(const fs::path& folder) {
    std::size_t removed = 0;
#if !defined(_WIN32)
    const std::string ours = std::string(kPrefix) + MachineWord() + '-';
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(folder, ignored)) {
        if (!entry.path().filename().string().starts_with(ours)) continue;
        const int fd = open(entry.path().c_str(), O_RDWR | O_CLOEXEC);
        if (fd < 0) continue;
        if (flock(fd, LOCK_EX | LOCK_NB) == 0) removed += fs::remove(entry.path(), ignored);
        close(fd);
    }
#else
    (void)folder;
#endif
    return removed;
}

void RemoveTemporaryFiles() noexcept {
#if !defined(_WIN32)
    ending = true;
    // Libraries open some of them by name, and thereby make them again.
    for (bool removed = true; removed;) {
        removed = false;
        for (Slot& slot : slots)
            if (slot.state == Slot::Named) removed |= unlink(slot.name.data()) == 0;
    }
#endif
}

}  // namespace zel
