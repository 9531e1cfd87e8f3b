#include "cli/Chain.h"

#include "cli/EffectFinder.h"
#include "cli/Preset.h"
#include "cli/Settings.h"
#include "headless/Error.h"
#include "headless/Text.h"

#include <algorithm>

namespace zel {

namespace {

/// The host that the effects of a chain see.
struct Host {
    Personality personality;
    std::optional<Isolation> isolation;
};

ChainLink& AddLink(Chain& chain, const std::filesystem::path& module, const Host& host) {
    return chain.emplace_back(module, host.personality, host.isolation);
}

void AddPreset(Chain& chain, const std::string& file, const Host& host) {
    const Preset preset = LoadPreset(file);
    // A name, never a path: a preset from elsewhere must not choose a file to load.
    std::string name = preset.effect;
    std::ranges::replace_if(
        name, [](char c) { return c == '/' || c == '\\' || c == '.'; }, ' ');
    try {
        AddLink(chain, FindModule(name), host);
    } catch (const Error& e) {
        throw Error(e.Kind(), "preset '" + file + "': " + e.what());
    }
    preset.Apply(chain.back().values);
}

bool IsPresetFile(const std::string& look) {
    return Lower(std::filesystem::path(look).extension().string()) == ".json";
}

/// The link for --effect: the last of the chain that is this effect, else a new one.
ChainLink& LinkOf(Chain& chain, const std::string& effect, const Host& host) {
    const auto module = FindModule(effect);
    const auto found = std::find_if(chain.rbegin(), chain.rend(), [&](const ChainLink& link) {
        std::error_code ignored;
        return std::filesystem::equivalent(link.session.File(), module, ignored);
    });
    return found != chain.rend() ? *found : AddLink(chain, module, host);
}

std::string SettingOf(const ParameterValues& values) {
    std::string text;
    for (const Parameter& p : values.List().All()) {
        if (!p.IsSettable() || IsDefault(values, p)) continue;
        const bool box = p.kind == Parameter::Kind::CheckBox;
        text += (text.empty() ? "" : ", ") + p.path + " " +
                (box ? "on" : Number(static_cast<float>(values.Get(p))));
    }
    const auto direction = DirectionOf(values);
    return (text.empty() ? "every parameter at its default" : text) +
           (direction ? ": " + *direction : "");
}

template <class Text>
std::string Joined(const Chain& chain, const char* between, Text textOf) {
    std::string text;
    for (const ChainLink& link : chain) text += (text.empty() ? "" : between) + textOf(link);
    return text;
}

}  // namespace

Chain ChainFrom(const Arguments& arguments) {
    const Host host{arguments.Is("host", "ae") ? Personality::AfterEffects : Personality::Premiere,
                    IsolationFrom(arguments)};
    Chain chain;
    for (const std::string& look : arguments.All("LOOK")) {
        if (IsPresetFile(look))
            AddPreset(chain, look, host);
        else
            AddLink(chain, FindModule(look), host);
    }
    for (const std::string& file : arguments.All("preset")) AddPreset(chain, file, host);
    const auto effect = arguments.Last("effect");
    if (!effect && chain.empty())
        throw Error(ErrorKind::Usage, "an effect is missing: name one, or a preset with --preset");
    if (effect && IsPresetFile(*effect))
        throw Error(ErrorKind::Usage,
                    "--effect cannot be '" + *effect + "': that is a preset, for --preset");
    ApplySettings(arguments, (effect ? LinkOf(chain, *effect, host) : chain.back()).values);

    if (arguments.Has("save-preset") && chain.size() > 1)
        throw Error(ErrorKind::Usage, "--save-preset cannot take " + std::to_string(chain.size()) +
                                          " effects: a preset holds one; save each on its own");
    return chain;
}

void SavePresetIfAsked(const Arguments& arguments, const Chain& chain) {
    if (const auto file = arguments.Last("save-preset"))
        SavePreset(*file, chain.front().session.Name(), chain.front().values);
}

std::string NamesOf(const Chain& chain) {
    return Joined(chain, ", then ", [](const ChainLink& link) { return link.session.Name(); });
}

std::string SettingsOf(const Chain& chain) {
    return Joined(chain, "; ", [](const ChainLink& link) { return SettingOf(link.values); });
}

}  // namespace zel
