/// Presets of any text: they set what the effect has, within its ranges, or end in an
/// error; what was read, saved and read again is the same setting.

#include "cli/Preset.h"
#include "cli/Settings.h"
#include "fuzz/ScratchFile.h"
#include "headless/EffectSession.h"
#include "headless/Error.h"

#include <cstring>
#include <memory>
#include <vector>

namespace {

using namespace zel;
using namespace zel::fuzz;

constexpr const char* kModules[] = {ZEL_FUZZ_MODULES};

const EffectSession& SessionOf(std::size_t i) {
    static const auto sessions = [] {
        std::vector<std::unique_ptr<EffectSession>> all;
        for (const char* module : kModules)
            all.push_back(std::make_unique<EffectSession>(module, Personality::Premiere));
        return all;
    }();
    return *sessions[i % sessions.size()];
}

void CheckWithinRanges(const ParameterValues& values) {
    for (const Parameter& p : values.List().All())
        if (p.IsSettable())
            Check(values.Get(p) >= p.Minimum() && values.Get(p) <= p.Maximum(),
                  "a value is out of its range");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchFile file(".json"), again(".again.json");
    if (size == 0) return 0;
    file.Fill({data + 1, size - 1});
    const EffectSession& session = SessionOf(data[0]);
    try {
        ParameterValues values(session.Params());
        LoadPreset(file.Path()).Apply(values);
        CheckWithinRanges(values);

        SavePreset(again.Path(), session.Name(), values);
        ParameterValues reread(session.Params());
        LoadPreset(again.Path()).Apply(reread);
        for (const Parameter& p : session.Params().All())
            if (p.IsSettable())
                // What the effects cannot tell from a default is left out.
                Check(reread.Get(p) == values.Get(p) || IsDefault(values, p),
                      "a saved preset reads differently");
    } catch (const Error& e) {
        Check(e.what()[0] != '\0' && !std::strchr(e.what(), '\n'), "an error is not one line");
    }
    return 0;
}
