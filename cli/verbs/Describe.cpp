/// zelfx describe: the parameters of an effect, as its module registers them.

#include "cli/EffectFinder.h"
#include "cli/Isolate.h"
#include "cli/Json.h"
#include "cli/Settings.h"
#include "cli/verbs/Verbs.h"
#include "headless/EffectSession.h"
#include "headless/Text.h"

#include <cctype>
#include <cstdio>
#include <iostream>

namespace zel {

namespace {

// clang-format off
constexpr Option kOptions[] = {
    {"EFFECT",  "",      "effect name, module name or module file", Option::Required},
    {"--json",  nullptr, "print as JSON"},
    {"--names", nullptr, "print what to call its parameters, one a line"},
    kIsolateOption,
    kIsolateLimitOption,
};
// clang-format on

const char* KindName(Parameter::Kind kind) {
    switch (kind) {
        case Parameter::Kind::GroupStart: return "group";
        case Parameter::Kind::GroupEnd: return "group end";
        case Parameter::Kind::Slider: return "slider";
        case Parameter::Kind::CheckBox: return "check box";
        default: return "other";
    }
}

void PrintJson(const EffectSession& session) {
    nlohmann::ordered_json effect{{"name", session.Name()}, {"file", session.File().string()}};
    auto formats = nlohmann::ordered_json::array();
    for (const PrPixelFormat code : session.Formats())
        for (const FormatFacts& facts : KnownFormats())
            if (facts.code == code) formats.push_back(std::string(facts.name));
    effect["formats"] = formats;
    auto list = nlohmann::ordered_json::array();
    for (const Parameter& p : session.Params().All()) {
        nlohmann::ordered_json entry{{"index", p.index},
                                     {"id", p.id},
                                     {"kind", KindName(p.kind)},
                                     {"path", p.path},
                                     {"name", p.name}};
        if (p.kind == Parameter::Kind::Slider) {
            // Through text, so that 0.6 reads 0.6 and not 0.6000000238418579.
            const auto number = [](float v) { return nlohmann::ordered_json::parse(Number(v)); };
            entry["minimum"] = number(p.Minimum());
            entry["maximum"] = number(p.Maximum());
            entry["default"] = number(p.Default());
            entry["precision"] = p.Precision();
        } else if (p.kind == Parameter::Kind::CheckBox) {
            entry["default"] = p.Default() != 0.0f;
            if (const std::string words = PlainWords(p); !words.empty()) entry["meaning"] = words;
        }
        list.push_back(entry);
    }
    effect["parameters"] = list;
    std::cout << JsonText(effect);
}

void PrintTable(const EffectSession& session) {
    std::printf("%s\n\n%5s %5s  %-36s %14s %9s %8s\n", session.Name().c_str(), "index", "id",
                "name", "range", "default", "decimals");
    for (const Parameter& p : session.Params().All()) {
        if (p.kind == Parameter::Kind::GroupEnd) continue;
        std::printf("%5d %5d  %*s%*s", p.index, p.id, 2 * p.depth, "",
                    p.IsSettable() ? 2 * p.depth - 36 : 0, p.name.c_str());
        if (p.kind == Parameter::Kind::Slider)
            std::printf(" %14s %9s %8d", p.Range().c_str(), Number(p.Default()).c_str(),
                        p.Precision());
        else if (p.kind == Parameter::Kind::CheckBox)
            std::printf(" %14s %9s", p.Range().c_str(), p.Default() != 0.0f ? "on" : "off");
        if (const std::string words = PlainWords(p); !words.empty())
            std::printf("\n%15s(%s)", "", words.c_str());
        std::printf("\n");
    }
}

/// "highlights.red": a path as it is easily typed in a shell.
std::string TypedPath(const std::string& path) {
    std::string typed;
    for (const char c : Lower(path)) {
        if (c == '/')
            typed += '.';
        else if (std::isalnum(static_cast<unsigned char>(c)))
            typed += c;
        else if (!typed.ends_with('_') && !typed.ends_with('.'))
            typed += '_';
    }
    return typed;
}

int Run(const Arguments& arguments) {
    const EffectSession session(FindModule(*arguments.Last("EFFECT")), Personality::Premiere,
                                IsolationFrom(arguments));
    if (arguments.Has("json"))
        PrintJson(session);
    else if (arguments.Has("names"))
        for (const Parameter& p : session.Params().All())
            std::cout << (p.IsSettable() ? TypedPath(p.path) + '\n' : "");
    else
        PrintTable(session);
    return 0;
}

}  // namespace

Verb DescribeVerb() {
    return {"describe", "Show an effect's parameters", kOptions,
            "Example:\n"
            "  zelfx describe color_balance",
            Run};
}

}  // namespace zel
