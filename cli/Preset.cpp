#include "cli/Preset.h"

#include "cli/Settings.h"
#include "cli/picture/TemporaryFile.h"
#include "headless/Error.h"
#include "headless/Text.h"

#include <nlohmann/json.hpp>

#include <cctype>
#include <fstream>
#include <set>

namespace zel {

namespace {

using Json = nlohmann::ordered_json;

constexpr int kVersion = 1;
constexpr const char* kMembers[] = {"effect", "version", "parameters"};

[[noreturn]] void Fail(const std::filesystem::path& file, const std::string& why) {
    std::string line = "preset '" + file.string() + "': " + why;
    for (char& c : line)
        if (std::iscntrl(static_cast<unsigned char>(c))) c = ' ';  // names come from the file
    throw Error(ErrorKind::Input, line);
}

/// The parser's words, without the tag in front.
std::string Reason(const nlohmann::json::exception& e) {
    const std::string text = e.what();
    const auto tag = text.find("] ");
    return tag == std::string::npos ? text : text.substr(tag + 2);
}

/// The parser takes the last of several members of one name; here that is a mistake.
Json Parse(std::istream& in, const std::filesystem::path& file) {
    std::vector<std::set<std::string>> open;
    const auto watch = [&](int, Json::parse_event_t event, Json& parsed) {
        if (event == Json::parse_event_t::object_start) open.emplace_back();
        if (event == Json::parse_event_t::object_end) open.pop_back();
        if (event == Json::parse_event_t::key &&
            !open.back().insert(parsed.get<std::string>()).second)
            Fail(file, "it has '" + parsed.get<std::string>() + "' twice");
        return true;
    };
    try {
        return Json::parse(in, watch);
    } catch (const nlohmann::json::exception& e) {
        Fail(file, "it is no JSON (" + Reason(e) + ")");
    }
}

Preset::Entry EntryOf(const std::string& name, const Json& value) {
    const std::string text = value.dump();
    if (value.is_boolean())
        return {name, Preset::Type::Boolean, value.get<bool>() ? 1.0 : 0.0, text};
    if (value.is_number()) return {name, Preset::Type::Number, value.get<double>(), text};
    return {name, Preset::Type::Other, 0.0, text};
}

void RequireKnownMembers(const std::filesystem::path& file, const Json& json) {
    const std::vector<std::string> known(std::begin(kMembers), std::end(kMembers));
    for (const auto& [name, value] : json.items())
        if (std::ranges::find(known, name) == known.end())
            Fail(file, "there is nothing named '" + name + "' in a preset; it has " +
                           Alternatives(known));
}

}  // namespace

Preset LoadPreset(const std::filesystem::path& file) {
    std::error_code ignored;
    if (!std::filesystem::exists(file, ignored)) Fail(file, "there is no such file");
    std::ifstream in(file);
    if (std::filesystem::is_directory(file, ignored) || !in) Fail(file, "it cannot be read");
    const Json json = Parse(in, file);

    if (!json.is_object()) Fail(file, "it is no JSON object but " + json.dump().substr(0, 40));
    RequireKnownMembers(file, json);
    const Json version = json.value("version", Json());
    if (version != kVersion)
        Fail(file, "'version' cannot be " + version.dump() + ": this program reads " +
                       std::to_string(kVersion));
    const Json effect = json.value("effect", Json());
    if (!effect.is_string())
        Fail(file, "'effect' cannot be " + effect.dump() + ": it takes an effect's name in quotes");
    const Json parameters = json.value("parameters", Json::object());
    if (!parameters.is_object())
        Fail(file, "'parameters' cannot be " + parameters.dump() + R"(: it takes {"NAME": VALUE})");

    Preset preset{file, effect.get<std::string>(), {}};
    for (const auto& [name, value] : parameters.items())
        preset.entries.push_back(EntryOf(name, value));
    return preset;
}

void Preset::Apply(ParameterValues& values) const {
    std::set<int> given;
    for (const Entry& entry : entries) {
        try {
            const Parameter& parameter = values.List().Find(entry.name);
            if (!given.insert(parameter.index).second)
                Fail(file, "it has '" + parameter.path + "' twice, once as '" + entry.name + "'");
            const bool box = parameter.kind == Parameter::Kind::CheckBox;
            if (entry.type != (box ? Type::Boolean : Type::Number))
                Fail(file, "'" + parameter.path + "' cannot be " + entry.text +
                               (box ? ": it takes true or false"
                                    : ": that is no number; it takes " + parameter.Range()));
            values.Set(parameter, entry.value);
        } catch (const Error& e) {
            if (e.Kind() == ErrorKind::Input) throw;
            Fail(file, e.what());
        }
    }
}

void SavePreset(const std::filesystem::path& file, const std::string& effect,
                const ParameterValues& values) {
    Json parameters = Json::object();
    for (const Parameter& p : values.List().All()) {
        if (!p.IsSettable() || IsDefault(values, p)) continue;
        if (p.kind == Parameter::Kind::CheckBox)
            parameters[p.path] = values.Get(p) != 0.0;
        else  // through text, so that 27 reads 27 and not 27.0
            parameters[p.path] = Json::parse(Number(values.Get(p)));
    }
    const Json json{{"effect", effect}, {"version", kVersion}, {"parameters", parameters}};

    TemporaryFile temporary(file);
    std::ofstream out(temporary.Path());
    out << json.dump(2) << '\n';
    out.close();
    if (!out) throw Error(ErrorKind::Other, "cannot write '" + file.string() + "'");
    temporary.Commit();
}

}  // namespace zel
