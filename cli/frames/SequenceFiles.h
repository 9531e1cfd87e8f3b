#pragma once

/// The files of a sequence as source and sink of a run.

#include "cli/frames/Manifest.h"
#include "cli/frames/Sequence.h"
#include "cli/frames/Shot.h"

#include <optional>
#include <vector>

namespace zel {

class SequenceSource : public FrameSource {
public:
    /// When the output of an earlier run is kept instead of rendering the frame: never, or
    /// when it is a whole picture of the shape that the render would give it and, with
    /// `expected`, has the checksum that stands there.
    struct Keep {
        bool whole = false;
        const ExpectedFiles* expected = nullptr;
    };

    /// Frames of `plan`, read from `in` and named `out`.
    SequenceSource(std::vector<PlannedFrame> plan, FrameName in, FrameName out,
                   const RenderOptions& options, Keep keep);

    std::optional<Shot> Next() override;
    void Load(Shot& shot) override;

private:
    bool IsDone(const Shot& shot) const;

    std::vector<PlannedFrame> m_plan;
    std::size_t m_next = 0;
    FrameName m_in, m_out;
    RenderOptions m_options;
    Keep m_keep;
};

class SequenceSink : public FrameSink {
public:
    /// Holds the outputs against `expected` unless that is null.
    SequenceSink(const RenderOptions& options, const ExpectedFiles* expected);

    /// Outputs, all of them in `folder`, are listed in that file. Throws as ManifestWriter
    /// does.
    void ListIn(const std::filesystem::path& manifest, const std::filesystem::path& folder);

    void Encode(Shot& shot) override;
    void Deliver(Shot& shot) override;
    void Finish() override;

    /// Outputs that are not as expected, and how they differ: "'out/1.dpx' differs in its
    /// checksum".
    const std::vector<std::string>& Faults() const { return m_faults; }

private:
    RenderOptions m_options;
    const ExpectedFiles* m_expected;
    std::optional<ManifestWriter> m_manifest;
    std::vector<std::string> m_faults;
};

/// Throws unless the outputs of `plan` can be written: Error(Usage) when several frames
/// have no place for their number, when an output is one of the input's files, by whatever
/// name, or when it leads out of a folder that it names itself; Error(Other) when the
/// folder is not there or nothing can be made in it. A single picture may replace itself.
void RequireOutputs(const std::vector<PlannedFrame>& plan, const FrameName& in,
                    const FrameName& out);

/// Throws Error(Usage) when a file beside the frames would replace one of them.
void RequireBeside(const std::filesystem::path& file, const FrameName& in, const FrameName& out);

}  // namespace zel
