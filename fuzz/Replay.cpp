/// Runs files through a fuzz target without a fuzzer: every file named, and every file of
/// every folder named. At least one there must be.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

int Replay(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
    if (!in.is_open()) {
        std::fprintf(stderr, "cannot read %s\n", file.string().c_str());
        return 0;
    }
    // The name first: it is what a crash is to be found by.
    std::printf("%s\n", file.string().c_str());
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    const std::uint8_t nothing = 0;
    LLVMFuzzerTestOneInput(&nothing, 0);
    int files = 0;
    for (int i = 1; i < argc; ++i) {
        const fs::path path = argv[i];
        if (!fs::is_directory(path)) {
            files += Replay(path);
            continue;
        }
        for (const auto& entry : fs::directory_iterator(path)) files += Replay(entry.path());
    }
    std::printf("%d inputs\n", files);
    return files > 0 ? 0 : 1;
}
