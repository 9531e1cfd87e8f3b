/// Manifests of any text: files below their folder with sizes and sums, or an error in
/// one line.

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
            Check(entry.facts.sum.size() == 64, "a sum of another length");
            const auto way = entry.file.lexically_relative(file.Path().parent_path());
            Check(!way.empty() && *way.begin() != "..", "a file outside of the folder");
        }
    } catch (const Error& e) {
        Check(e.Kind() == ErrorKind::Input, "another kind of error");
        Check(!std::strchr(e.what(), '\n'), "an error is not one line");
    }
    return 0;
}
