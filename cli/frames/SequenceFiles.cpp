#include "cli/frames/SequenceFiles.h"

#include "cli/picture/TemporaryFile.h"
#include "headless/Error.h"

namespace zel {

namespace fs = std::filesystem;

SequenceSource::SequenceSource(std::vector<PlannedFrame> plan, FrameName in, FrameName out,
                               const RenderOptions& options, Keep keep)
    : m_plan(std::move(plan)),
      m_in(std::move(in)),
      m_out(std::move(out)),
      m_options(options),
      m_keep(keep) {}

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
    if (!m_keep.whole || !IsDone(shot)) return;
    shot.fate = Fate::Kept;
    shot.picture.reset();
}

bool SequenceSource::IsDone(const Shot& shot) const {
    const PictureShape shape = ExpectedPicture(shot.out, shot.picture->Header(), m_options);
    return IsWholePicture(shot.out, shape) &&
           (!m_keep.expected || m_keep.expected->FaultOf(shot.out, FactsOfFile(shot.out)).empty());
}

SequenceSink::SequenceSink(const RenderOptions& options, const ExpectedFiles* expected)
    : m_options(options), m_expected(expected) {}

void SequenceSink::ListIn(const fs::path& manifest, const fs::path& folder) {
    m_manifest.emplace(manifest, folder);
}

void SequenceSink::Encode(Shot& shot) {
    if (shot.IsRendered()) {
        WriteRendered(shot.out, *shot.frame, shot.picture->Header(), m_options, shot.report);
        shot.frame.reset();  // before it waits for its turn
        shot.picture.reset();
    }
    if (shot.fate != Fate::Missing && (m_manifest || m_expected))
        shot.facts = FactsOfFile(shot.out);
}

void SequenceSink::Deliver(Shot& shot) {
    if (!shot.facts) return;
    if (m_manifest) m_manifest->Add(shot.number, shot.out, *shot.facts);
    if (!m_expected) return;
    const std::string fault = m_expected->FaultOf(shot.out, *shot.facts);
    if (!fault.empty()) m_faults.push_back("'" + shot.out.string() + "' " + fault);
}

void SequenceSink::Finish() {
    if (m_manifest) m_manifest->Finish();
}

namespace {

/// "a/../.." leads out of a; "../a" names its folder from the start.
bool LeadsOutOfItself(const fs::path& folder) {
    int depth = 0;
    for (const fs::path& part : folder) {
        if (part == "..") {
            if (depth > 0) return true;
        } else if (!part.empty() && part != ".") {
            ++depth;
        }
    }
    return false;
}

}  // namespace

void RequireOutputs(const std::vector<PlannedFrame>& plan, const FrameName& in,
                    const FrameName& out) {
    if (plan.size() > 1 && !out.HasPlace())
        throw Error(ErrorKind::Usage, "'" + out.Text() + "' has no place for the number of " +
                                          std::to_string(plan.size()) +
                                          " frames: write #### or %04d into its name");
    if (out.HasPlace() && LeadsOutOfItself(out.Folder()))
        throw Error(ErrorKind::Usage,
                    "'" + out.Text() + "' leads out of a folder that it names: leave out '..'");
    if (in.HasPlace()) {
        std::error_code ignored;
        for (const PlannedFrame& frame : plan) {
            const fs::path file = out.Of(frame.number);
            if (in.Names(file) || fs::equivalent(file, in.Of(frame.from), ignored))
                throw Error(ErrorKind::Usage, "cannot write '" + file.string() +
                                                  "': it belongs to the sequence that is read");
        }
    }
    const TemporaryFile writable(out.Of(plan.front().number));
}

void RequireBeside(const fs::path& file, const FrameName& in, const FrameName& out) {
    for (const FrameName* name : {&in, &out})
        if (name->Names(file))
            throw Error(ErrorKind::Usage,
                        "'" + file.string() + "' is a frame of '" + name->Text() +
                            "': give another name for what is written beside the frames");
}

}  // namespace zel
