#include "headless/Module.h"

#include "headless/Error.h"

#include <string>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace zel {

namespace {

constexpr const char* kEntryName = "main";

[[noreturn]] void Fail(const std::filesystem::path& file, const std::string& why) {
    throw Error(ErrorKind::Module, "'" + file.string() + "' " + why);
}

#if defined(_WIN32)

void* Load(const std::filesystem::path& file) {
    HMODULE library = LoadLibraryW(std::filesystem::absolute(file).c_str());
    if (!library)
        Fail(file, "cannot be loaded as an effect module: Windows error " +
                       std::to_string(GetLastError()));
    return library;
}

void* Symbol(void* library) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), kEntryName));
}

void Release(void* library) { FreeLibrary(static_cast<HMODULE>(library)); }

#else

void* Load(const std::filesystem::path& file) {
    // Absolute: a bare file name would be searched for in the system's folders.
    void* library = dlopen(std::filesystem::absolute(file).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        const char* why = dlerror();
        Fail(file, std::string("cannot be loaded as an effect module: ") +
                       (why ? why : "no reason given"));
    }
    return library;
}

void* Symbol(void* library) { return dlsym(library, kEntryName); }

void Release(void* library) { dlclose(library); }

#endif

}  // namespace

#if defined(_WIN32)
const char* const Module::kSuffix = ".aex";
#elif defined(__APPLE__)
const char* const Module::kSuffix = ".plugin";
#else
const char* const Module::kSuffix = ".so";
#endif

void Module::Unload::operator()(void* library) const { Release(library); }

Module::Module(const std::filesystem::path& file) : m_file(file), m_entry(nullptr) {
    std::filesystem::path binary = file;
#if defined(__APPLE__)
    if (std::filesystem::is_directory(file)) binary = file / "Contents" / "MacOS" / file.stem();
#endif
    std::error_code ignored;
    if (!std::filesystem::exists(binary, ignored))
        Fail(file, "is not there: no such effect module");
    m_library.reset(Load(binary));
    m_entry = reinterpret_cast<abi::EntryPoint*>(Symbol(m_library.get()));
    if (!m_entry)
        Fail(file, "is no effect module: it does not export '" + std::string(kEntryName) + "'");
}

}  // namespace zel
