#pragma once

/// Clips made by ffmpeg, and what ffprobe tells of them.

#include "tests/cli/CliTest.h"

#include <nlohmann/json.hpp>

#include <string>

namespace zel::test {

class VideoTest : public CliTest {
protected:
    /// ffmpeg with these arguments, quietly, in the folder.
    void Ffmpeg(const Words& arguments) const;

    /// A moving picture and a tone: `seconds` of `size` at `rate`, encoded by `more`.
    void MakeClip(const std::string& file, const Words& more, const std::string& size = "96x64",
                  const std::string& rate = "25", const std::string& seconds = "1") const;

    /// Marked in every way, so that nothing has to be assumed.
    void MakePlainClip(const std::string& file, const std::string& seconds = "1") const;

    /// zelfx render IN OUT -e color_balance and more.
    Outcome RenderClip(const std::string& in, const std::string& out, const Words& more = {}) const;

    /// The first video stream by ffprobe, its frames counted: "nb_read_frames".
    nlohmann::json VideoOf(const std::string& file) const;

    /// A checksum of every packet of every sound stream.
    std::string Sound(const std::string& file) const;

    /// Samples of all frames in a raw layout, without any scaling where the file has it.
    template <class T>
    std::vector<T> Samples(const std::string& file, const std::string& layout) const {
        Ffmpeg({"-i", "file:" + file, "-map", "0:v:0", "-fps_mode", "passthrough", "-f", "rawvideo",
                "-pix_fmt", layout, "samples.raw"});
        const Bytes bytes = ReadFile(In("samples.raw"));
        fs::remove(In("samples.raw"));
        return ValuesOf<T>(bytes);
    }
};

}  // namespace zel::test
