/// A library to be preloaded into a program: it makes one of the program's calls to the
/// system fail. What and when comes from the environment:
///   ZEL_FAULT         "write ENOSPC 3 1": call, error, which is the first to fail, and
///                     how many do; calls are open, read, write, sync, close, rename and
///                     memory, counted from the start of main()
///   ZEL_FAULT_FOLDER  files outside of this folder are left alone
///   ZEL_FAULT_TOLD    a file for how many calls of each kind there were: one line of
///                     seven numbers, in that order
/// A close() that fails loses half of what was written, as a server may. Reads fail from
/// files that are open for reading only: libtiff reads what it has just written, and
/// crashes when it cannot.

#include <dlfcn.h>
#include <fcntl.h>
#include <stdio_ext.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

enum Call { Open, Read, Write, Sync, Close, Rename, Memory, None };
constexpr const char* kCalls[] = {"open", "read", "write", "sync", "close", "rename", "memory"};

struct NamedError {
    const char* name;
    int number;
};
constexpr NamedError kErrors[] = {
    {"EIO", EIO}, {"ENOSPC", ENOSPC}, {"EINTR", EINTR}, {"EMFILE", EMFILE}, {"ENOMEM", ENOMEM}};

bool started = false;  // main()
Call faulty = None;
int error = 0;
long first = 0, count = 0;
char folder[PATH_MAX], told[PATH_MAX];
std::atomic<long> calls[None];

// By descriptor: open for a file in the folder, and written to.
std::atomic<bool> watched[4096], written[4096];

template <class Function>
Function* Real(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

void Tell() {
    char text[256];
    int length = 0;
    for (const auto& number : calls)
        length += std::snprintf(text + length, 32, "%ld ", number.load());
    const long file = syscall(SYS_openat, AT_FDCWD, told, O_CREAT | O_WRONLY | O_TRUNC, 0666);
    if (syscall(SYS_write, file, text, length) != length) std::abort();
    syscall(SYS_close, file);
}

void Arm() {
    const auto variable = [](const char* name) {
        const char* value = std::getenv(name);
        return value ? value : "";
    };
    char call[16] = "", name[16] = "";
    if (std::sscanf(variable("ZEL_FAULT"), "%15s %15s %ld %ld", call, name, &first, &count) != 4)
        return;
    std::snprintf(folder, sizeof folder, "%s/", variable("ZEL_FAULT_FOLDER"));
    std::snprintf(told, sizeof told, "%s", variable("ZEL_FAULT_TOLD"));
    for (const NamedError& e : kErrors)
        if (std::strcmp(e.name, name) == 0) error = e.number;
    for (int c = Open; c < None; ++c)
        if (std::strcmp(kCalls[c], call) == 0) faulty = static_cast<Call>(c);
    if (error == 0 || faulty == None) std::abort();
    std::atexit(Tell);
    started = true;
}

/// True when this call is to fail; errno is set then.
bool Fails(Call call) {
    if (!started) return false;
    const long number = ++calls[call];
    if (call != faulty || number < first || number >= first + count) return false;
    errno = error;
    return true;
}

bool InFolder(const char* path) {
    if (!started) return false;
    char whole[2 * PATH_MAX];
    if (*path == '/' || !getcwd(whole, PATH_MAX))
        *whole = '\0';
    else
        std::strcat(whole, "/");
    std::strncat(whole, path, PATH_MAX);
    return std::strncmp(whole, folder, std::strlen(folder)) == 0;
}

bool Watched(int descriptor) { return descriptor >= 0 && descriptor < 4096 && watched[descriptor]; }

bool ReadFails(int descriptor) {
    return Watched(descriptor) && (fcntl(descriptor, F_GETFL) & O_ACCMODE) == O_RDONLY &&
           Fails(Read);
}

void Opened(int descriptor, bool inFolder) {
    if (descriptor < 0 || descriptor >= 4096) return;
    watched[descriptor] = inFolder;
    written[descriptor] = false;
}

bool WriteFails(int descriptor) {
    if (!Watched(descriptor)) return false;
    written[descriptor] = true;
    return Fails(Write);
}
bool WriteFails(std::FILE* file) {
    return started && __fwritable(file) && WriteFails(fileno(file));
}

/// The loss of a failing close(), after which the descriptor is gone all the same.
void LoseHalf(int descriptor) {
    struct stat facts {};
    if (!written[descriptor] || fstat(descriptor, &facts) != 0) return;
    if (ftruncate(descriptor, facts.st_size / 2) != 0) std::abort();
}

int (*realMain)(int, char**, char**) = nullptr;
int ArmedMain(int argc, char** argv, char** environment) {
    Arm();
    return realMain(argc, argv, environment);
}

}  // namespace

#define EXPORT extern "C" __attribute__((visibility("default")))
#define REAL(name) static auto* const real = Real<decltype(name)>(#name)

EXPORT int __libc_start_main(int (*main)(int, char**, char**), int argc, char** argv,
                             void (*init)(), void (*fini)(), void (*ldFini)(), void* stackEnd) {
    auto* const real = Real<int(int (*)(int, char**, char**), int, char**, void (*)(), void (*)(),
                                void (*)(), void*)>("__libc_start_main");
    realMain = main;
    return real(ArmedMain, argc, argv, init, fini, ldFini, stackEnd);
}

// --- files ----------------------------------------------------------------------

namespace {

template <class Opening>
int OpenWatched(const char* path, Opening open) {
    const bool inFolder = InFolder(path);
    if (inFolder && Fails(Open)) return -1;
    const int descriptor = open();
    Opened(descriptor, inFolder);
    return descriptor;
}

int ModeOf(int flags, std::va_list arguments) {
    return flags & (O_CREAT | O_TMPFILE) ? va_arg(arguments, int) : 0;
}

template <class Opening>
std::FILE* OpenStream(const char* path, Opening open) {
    const bool inFolder = InFolder(path);
    if (inFolder && Fails(Open)) return nullptr;
    std::FILE* file = open();
    if (file) Opened(fileno(file), inFolder);
    return file;
}

}  // namespace

#define OPEN(name)                                                         \
    EXPORT int name(const char* path, int flags, ...) {                    \
        REAL(name);                                                        \
        std::va_list arguments;                                            \
        va_start(arguments, flags);                                        \
        const int mode = ModeOf(flags, arguments);                         \
        va_end(arguments);                                                 \
        return OpenWatched(path, [&] { return real(path, flags, mode); }); \
    }
#define OPENAT(name)                                                              \
    EXPORT int name(int where, const char* path, int flags, ...) {                \
        REAL(name);                                                               \
        std::va_list arguments;                                                   \
        va_start(arguments, flags);                                               \
        const int mode = ModeOf(flags, arguments);                                \
        va_end(arguments);                                                        \
        return OpenWatched(path, [&] { return real(where, path, flags, mode); }); \
    }
#define FOPEN(name)                                                \
    EXPORT std::FILE* name(const char* path, const char* mode) {   \
        REAL(name);                                                \
        return OpenStream(path, [&] { return real(path, mode); }); \
    }

OPEN(open)
OPEN(open64)
OPENAT(openat)
OPENAT(openat64)
FOPEN(fopen)
FOPEN(fopen64)

EXPORT ssize_t read(int descriptor, void* to, std::size_t bytes) {
    REAL(read);
    return ReadFails(descriptor) ? -1 : real(descriptor, to, bytes);
}

EXPORT std::size_t fread(void* to, std::size_t size, std::size_t number, std::FILE* file) {
    REAL(fread);
    if (!started || !ReadFails(fileno(file))) return real(to, size, number, file);
    file->_flags |= 0x20;  // what ferror() asks for
    return 0;
}

EXPORT ssize_t write(int descriptor, const void* from, std::size_t bytes) {
    REAL(write);
    return WriteFails(descriptor) ? -1 : real(descriptor, from, bytes);
}

EXPORT ssize_t writev(int descriptor, const iovec* from, int number) {
    REAL(writev);
    return WriteFails(descriptor) ? -1 : real(descriptor, from, number);
}

EXPORT std::size_t fwrite(const void* from, std::size_t size, std::size_t number, std::FILE* file) {
    REAL(fwrite);
    if (!WriteFails(file)) return real(from, size, number, file);
    file->_flags |= 0x20;
    return 0;
}

EXPORT int fflush(std::FILE* file) {
    REAL(fflush);
    return file && WriteFails(file) ? EOF : real(file);
}

EXPORT int fsync(int descriptor) {
    REAL(fsync);
    return Watched(descriptor) && Fails(Sync) ? -1 : real(descriptor);
}

EXPORT int fdatasync(int descriptor) {
    REAL(fdatasync);
    return Watched(descriptor) && Fails(Sync) ? -1 : real(descriptor);
}

EXPORT int close(int descriptor) {
    REAL(close);
    const bool fails = Watched(descriptor) && Fails(Close);
    if (fails) LoseHalf(descriptor);
    Opened(descriptor, false);
    const int result = real(descriptor);
    if (fails) errno = error;
    return fails ? -1 : result;
}

EXPORT int fclose(std::FILE* file) {
    REAL(fclose);
    const int descriptor = fileno(file);
    const bool fails = Watched(descriptor) && Fails(Close);
    if (fails) std::fflush(file), LoseHalf(descriptor);
    Opened(descriptor, false);
    const int result = real(file);
    if (fails) errno = error;
    return fails ? EOF : result;
}

EXPORT int rename(const char* from, const char* to) {
    REAL(rename);
    return InFolder(to) && Fails(Rename) ? -1 : real(from, to);
}

// --- memory ---------------------------------------------------------------------

// What malloc() calls stands behind it: looking it up would need memory.
extern "C" void* __libc_malloc(std::size_t);
extern "C" void* __libc_calloc(std::size_t, std::size_t);
extern "C" void* __libc_realloc(void*, std::size_t);
extern "C" void* __libc_memalign(std::size_t, std::size_t);

EXPORT void* malloc(std::size_t bytes) { return Fails(Memory) ? nullptr : __libc_malloc(bytes); }
EXPORT void* calloc(std::size_t number, std::size_t size) {
    return Fails(Memory) ? nullptr : __libc_calloc(number, size);
}
EXPORT void* realloc(void* block, std::size_t bytes) {
    return Fails(Memory) ? nullptr : __libc_realloc(block, bytes);
}
EXPORT void* aligned_alloc(std::size_t alignment, std::size_t bytes) {
    return Fails(Memory) ? nullptr : __libc_memalign(alignment, bytes);
}
EXPORT int posix_memalign(void** block, std::size_t alignment, std::size_t bytes) {
    if (Fails(Memory)) return ENOMEM;
    *block = __libc_memalign(alignment, bytes);
    return *block ? 0 : ENOMEM;
}
