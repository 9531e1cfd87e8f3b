/// zel_resources windows MODULE FILE.rc
/// zel_resources mac32|mac64 MODULE FOLDER     writes FOLDER/Info.plist, PkgInfo, Resources/

#include "packaging/Files.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

namespace {

namespace fs = std::filesystem;
using namespace zel::packaging;

template <class Contents>
void Write(const fs::path& file, const Contents& contents) {
    std::ofstream out(file, std::ios::binary);
    for (const auto c : contents) out.put(static_cast<char>(c));
    if (!out.flush()) throw std::runtime_error("cannot write '" + file.string() + "'");
}

void Run(const std::string& platform, const std::string& module, const fs::path& place) {
    const Effect* const effect = Find(module);
    if (!effect) throw std::runtime_error("no module is called '" + module + "'");
    if (platform == "windows") return Write(place, WindowsScript(*effect, ZEL_VERSION));
    if (platform != "mac32" && platform != "mac64")
        throw std::runtime_error("'" + platform + "' is none of windows, mac32, mac64");
    fs::create_directories(place / "Resources");
    Write(place / "Info.plist", InfoPlist(*effect, ZEL_VERSION));
    Write(place / "PkgInfo", std::string(kPkgInfo));
    Write(place / "Resources" / (module + ".rsrc"),
          MacResources(*effect, platform == "mac32" ? Platform::Mac32 : Platform::Mac64));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "usage: zel_resources windows|mac32|mac64 MODULE FILE-OR-FOLDER\n";
        return 2;
    }
    try {
        Run(argv[1], argv[2], argv[3]);
    } catch (const std::exception& error) {
        std::cerr << "zel_resources: " << error.what() << '\n';
        return 1;
    }
}
