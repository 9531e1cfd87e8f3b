/// Manifests of any text: a list of names, sizes and sums, or an error in one line.

#include "cli/frames/Manifest.h"
#include "fuzz/ScratchFile.h"
#include "headless/Error.h"

#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zel;
    using namespace zel::fuzz;
    static const ScratchFile file(".manifest");
    file.Fill({data, size});
    try {
        for (const ManifestEntry& entry : ReadManifest(file.Path())) {
            Check(entry.sum.size() == 64, "a sum of another length");
            Check(!entry.name.empty(), "a file without a name");
        }
    } catch (const Error& e) {
        Check(e.Kind() == ErrorKind::Input, "another kind of error");
        Check(!std::strchr(e.what(), '\n'), "an error is not one line");
    }
    return 0;
}
