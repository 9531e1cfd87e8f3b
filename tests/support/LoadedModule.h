#pragma once

/// An effect module, loaded as an editor loads it and reached through its exported names
/// only.

#include "abi/HostTypes.h"

#include <string>

namespace zel::test {

class LoadedModule {
public:
    /// Throws std::runtime_error, with the loader's words, when the file is no module.
    explicit LoadedModule(const std::string& path);
    ~LoadedModule();
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;

    abi::EntryPoint* Entry() const { return m_entry; }

    /// The address of an exported name, null when there is none.
    void* Find(const char* name) const;

private:
    void* m_library;
    abi::EntryPoint* m_entry;
};

}  // namespace zel::test
