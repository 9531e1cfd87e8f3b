#pragma once

/// Running other programs in a folder that goes away with the test.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace zel::test {

class WorkFolder {
public:
    WorkFolder() {
        std::string path =
            (std::filesystem::temp_directory_path() / ("zel_" + std::string(6, 'X'))).string();
        if (!mkdtemp(path.data())) throw std::runtime_error("cannot make " + path);
        path_ = path;
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;
    ~WorkFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    std::string operator/(const std::string& name) const { return (path_ / name).string(); }

    void Write(const std::string& name, const std::vector<std::uint8_t>& bytes) const {
        std::ofstream file(*this / name, std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        if (!file) throw std::runtime_error("cannot write " + *this / name);
    }
    std::vector<std::uint8_t> Read(const std::string& name) const {
        std::ifstream file(*this / name, std::ios::binary);
        if (!file) throw std::runtime_error("cannot read " + *this / name);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// Runs a command line here; the test fails with what the program printed, or by
    /// saying that it is not installed.
    void Run(const std::string& command) const {
        const std::string line =
            "cd '" + path_.string() + "' && " + command + " > output.txt 2>&1 < /dev/null";
        const int status = std::system(line.c_str());
        const int code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        const std::string program = command.substr(0, command.find(' '));
        if (code == 127)
            throw std::runtime_error(program + " is not installed; this test needs it");
        if (code == 0) return;
        const std::vector<std::uint8_t> said = Read("output.txt");
        throw std::runtime_error(command + " ended with status " + std::to_string(code) + ":\n" +
                                 std::string(said.begin(), said.end()));
    }

private:
    std::filesystem::path path_;
};

}  // namespace zel::test
