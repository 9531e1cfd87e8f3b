#pragma once

/// An effect module, loaded as an editor loads it and reached through its one exported
/// name only.

#include "abi/HostTypes.h"

#include <stdexcept>
#include <string>

#if defined(_WIN32)
#define NOMINMAX
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace zel::test {

class LoadedModule {
public:
    /// Throws std::runtime_error, with the loader's words, when the file is no module.
    explicit LoadedModule(const std::string& path) : m_library(Load(path)) {
        m_entry = reinterpret_cast<abi::EntryPoint*>(Find("main"));
        if (!m_entry) throw std::runtime_error(path + " exports no 'main'");
    }
    ~LoadedModule() { Unload(); }
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;

    abi::EntryPoint* Entry() const { return m_entry; }

private:
#if defined(_WIN32)
    static HMODULE Load(const std::string& path) {
        const HMODULE library = LoadLibraryA(path.c_str());
        if (!library) throw std::runtime_error(path + ": error " + std::to_string(GetLastError()));
        return library;
    }
    FARPROC Find(const char* name) { return GetProcAddress(m_library, name); }
    void Unload() { FreeLibrary(m_library); }
    HMODULE m_library;
#else
    static void* Load(const std::string& path) {
        void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (!library) throw std::runtime_error(dlerror());
        return library;
    }
    void* Find(const char* name) { return dlsym(m_library, name); }
    void Unload() { dlclose(m_library); }
    void* m_library;
#endif
    abi::EntryPoint* m_entry;
};

}  // namespace zel::test
