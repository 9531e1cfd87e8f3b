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
    /// Frames of `plan`, read from `in` and named `out`. With `keepWhole`, a frame whose
    /// output is there as a whole picture, of the size and depth that the render would
    /// give it, is kept as it is.
    SequenceSource(std::vector<PlannedFrame> plan, FrameName in, FrameName out,
                   const RenderOptions& options, bool keepWhole);

    std::optional<Shot> Next() override;
    void Load(Shot& shot) override;

private:
    bool IsDone(const Shot& shot) const;

    std::vector<PlannedFrame> m_plan;
    std::size_t m_next = 0;
    FrameName m_in, m_out;
    RenderOptions m_options;
    bool m_keepWhole;
};

class SequenceSink : public FrameSink {
public:
    /// Writes a manifest where one is named.
    SequenceSink(const RenderOptions& options, const std::optional<std::string>& manifest);

    void Encode(Shot& shot) override;
    void Deliver(Shot& shot) override;
    void Finish() override;

private:
    RenderOptions m_options;
    std::optional<ManifestWriter> m_manifest;
};

/// Throws unless the outputs of `plan` can be written: Error(Usage) when several frames
/// have no place for their number or an output is one of the input's files, by whatever
/// name; Error(Other) when the folder is not there or nothing can be made in it.
void RequireOutputs(const std::vector<PlannedFrame>& plan, const FrameName& in,
                    const FrameName& out);

}  // namespace zel
