#include "cli/frames/SequenceFiles.h"

#include "cli/picture/TemporaryFile.h"
#include "headless/Error.h"

namespace zel {

namespace fs = std::filesystem;

SequenceSource::SequenceSource(std::vector<PlannedFrame> plan, FrameName in, FrameName out,
                               const RenderOptions& options, bool keepWhole)
    : m_plan(std::move(plan)),
      m_in(std::move(in)),
      m_out(std::move(out)),
      m_options(options),
      m_keepWhole(keepWhole) {}

std::optional<Shot> SequenceSource::Next() {
    if (m_next == m_plan.size()) return std::nullopt;
    const PlannedFrame& planned = m_plan[m_next++];
    Shot shot;
    shot.number = planned.number;
    shot.fate = planned.fate;
    shot.in = m_in.Of(planned.from);
    if (shot.IsRendered()) shot.out = m_out.Of(planned.number);
    return shot;
}

void SequenceSource::Load(Shot& shot) {
    if (!shot.IsRendered()) return;
    shot.picture = std::make_unique<PictureReader>(shot.in);
    if (!m_keepWhole || !IsDone(shot)) return;
    shot.fate = Fate::Kept;
    shot.picture.reset();
}

bool SequenceSource::IsDone(const Shot& shot) const {
    return IsWholePicture(shot.out, ExpectedPicture(shot.out, shot.picture->Header(), m_options));
}

SequenceSink::SequenceSink(const RenderOptions& options, const std::optional<std::string>& manifest)
    : m_options(options) {
    if (manifest) m_manifest.emplace(*manifest);
}

void SequenceSink::Encode(Shot& shot) {
    if (shot.IsRendered()) {
        WriteRendered(shot.out, *shot.frame, shot.picture->Header(), m_options, shot.report);
        shot.frame.reset();  // before it waits for its turn
        shot.picture.reset();
    }
    if (m_manifest && shot.fate != Fate::Missing) shot.entry = EntryOf(shot.out);
}

void SequenceSink::Deliver(Shot& shot) {
    if (m_manifest && shot.entry) m_manifest->Add(*shot.entry);
}

void SequenceSink::Finish() {
    if (m_manifest) m_manifest->Finish();
}

void RequireOutputs(const std::vector<PlannedFrame>& plan, const FrameName& in,
                    const FrameName& out) {
    std::error_code ignored;
    const fs::path first = out.Of(plan.front().number);
    if (plan.size() > 1 && !out.HasPlace())
        throw Error(ErrorKind::Usage, "'" + out.Text() + "' has no place for the number of " +
                                          std::to_string(plan.size()) +
                                          " frames: write #### or %04d into its name");
    const auto refuse = [](const fs::path& file) {
        throw Error(ErrorKind::Usage, "cannot write '" + file.string() +
                                          "': it belongs to the sequence that is read");
    };
    const auto folderOf = [](const FrameName& name) {
        return name.Folder().empty() ? fs::path(".") : name.Folder();
    };
    const bool oneFolder = fs::equivalent(folderOf(in), folderOf(out), ignored);
    for (const PlannedFrame& frame : plan) {
        const fs::path file = out.Of(frame.number);
        if (oneFolder && in.NumberOf(file.filename().string())) refuse(file);
        if (in.HasPlace() && fs::equivalent(file, in.Of(frame.from), ignored)) refuse(file);
    }
    const TemporaryFile writable(first);
}

}  // namespace zel
