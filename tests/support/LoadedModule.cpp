#include "tests/support/LoadedModule.h"

#include <stdexcept>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace zel::test {

namespace {

#if defined(_WIN32)

void* Load(const std::string& path) {
    const HMODULE library = LoadLibraryA(path.c_str());
    if (!library) throw std::runtime_error(path + ": error " + std::to_string(GetLastError()));
    return library;
}

void* Symbol(void* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void Unload(void* library) { FreeLibrary(static_cast<HMODULE>(library)); }

#else

void* Load(const std::string& path) {
    void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) throw std::runtime_error(dlerror());
    return library;
}

void* Symbol(void* library, const char* name) { return dlsym(library, name); }

void Unload(void* library) { dlclose(library); }

#endif

}  // namespace

LoadedModule::LoadedModule(const std::string& path)
    : m_library(Load(path)), m_entry(reinterpret_cast<abi::EntryPoint*>(Find("main"))) {
    if (m_entry) return;
    Unload(m_library);
    throw std::runtime_error(path + " exports no 'main'");
}

LoadedModule::~LoadedModule() { Unload(m_library); }

void* LoadedModule::Find(const char* name) const { return Symbol(m_library, name); }

}  // namespace zel::test
