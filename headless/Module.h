#pragma once

/// An effect module, loaded from its file.

#include "abi/HostTypes.h"

#include <filesystem>
#include <memory>

namespace zel {

class Module {
public:
    /// Suffix of a module's file on this platform, with the dot.
    static const char* const kSuffix;

    /// Loads `file` and looks its entry point up. Throws Error(Module) when the file
    /// is missing, cannot be loaded or exports no entry point.
    explicit Module(const std::filesystem::path& file);

    const std::filesystem::path& File() const { return m_file; }

    abi::EntryPoint& Entry() const { return *m_entry; }

private:
    struct Unload {
        void operator()(void* library) const;
    };

    std::filesystem::path m_file;
    std::unique_ptr<void, Unload> m_library;
    abi::EntryPoint* m_entry;
};

}  // namespace zel
