#pragma once

/// Sequences in a fresh folder, rendered by the program.

#include "tests/cli/CliTest.h"

#include <map>

namespace zel::test {

/// Content of files by their names.
using Files = std::map<std::string, Bytes>;

class FramesTest : public CliTest {
protected:
    FramesTest();

    /// Makes in/shot.0001.png and so on, no two of them alike, 16 bits.
    void MakeFrames(int count, const std::string& size = "48x32") const;

    /// Makes in/shot.0001.tif and so on of one noisy picture of that size: much to read and
    /// write, little to pack.
    void MakeEqualFrames(int count, const std::string& size) const;

    /// zelfx render IN OUT with a look and more.
    Words Command(const std::string& in, const std::string& out, const Words& more = {}) const;
    Outcome RenderFrames(const std::string& in, const std::string& out,
                         const Words& more = {}) const;

    /// The same for a sequence of one picture at a time, each by a program of its own, in
    /// a folder "alone".
    Files RenderedAlone(int count) const;

    Files FilesIn(const std::string& folder) const;

    /// Numbers of the frames in out/, "1 2 5"; anything else there is an error.
    std::string OutputFrames() const;
};

}  // namespace zel::test
