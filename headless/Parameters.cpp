#include "headless/Parameters.h"

#include "abi/HostCodes.h"
#include "headless/Error.h"
#include "headless/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace zel {

namespace {

Parameter::Kind KindOf(const PF_ParamDef& def) {
    switch (def.param_type) {
        case PF_Param_GROUP_START: return Parameter::Kind::GroupStart;
        case PF_Param_GROUP_END: return Parameter::Kind::GroupEnd;
        case PF_Param_FLOAT_SLIDER: return Parameter::Kind::Slider;
        case PF_Param_CHECKBOX: return Parameter::Kind::CheckBox;
        default: return Parameter::Kind::Other;
    }
}

std::string NameOf(PF_ParamDef def) {
    const char* name = abi::ParamName(def);
    return {name, std::find(name, name + 32, '\0')};
}

/// A path as people type it: case, blanks, '-' and '_' do not count, '.' is '/'.
std::string Folded(std::string_view path) {
    std::string folded = Lower(path);
    std::erase_if(folded, [](char c) { return c == ' ' || c == '-' || c == '_'; });
    std::ranges::replace(folded, '.', '/');
    return folded;
}

template <class T>
std::optional<T> Parsed(std::string_view text) {
    T value{};
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return value;
}

std::optional<double> CheckBoxWord(std::string_view text) {
    const std::string word = Lower(text);
    if (word == "on" || word == "true" || word == "yes") return 1.0;
    if (word == "off" || word == "false" || word == "no") return 0.0;
    return std::nullopt;
}

[[noreturn]] void Reject(const Parameter& parameter, const std::string& given, const char* why) {
    throw Error(ErrorKind::Usage, "'" + parameter.path + "' cannot be " + given + ": " + why +
                                      "; it takes " + parameter.Range());
}

}  // namespace

float Parameter::Minimum() const { return kind == Kind::Slider ? def.u.fs_d.valid_min : 0.0f; }
float Parameter::Maximum() const { return kind == Kind::Slider ? def.u.fs_d.valid_max : 1.0f; }
float Parameter::Default() const {
    return kind == Kind::Slider ? def.u.fs_d.dephault : static_cast<float>(def.u.bd.dephault);
}
int Parameter::Precision() const { return kind == Kind::Slider ? def.u.fs_d.precision : 0; }
std::string Parameter::Range() const {
    if (kind == Kind::CheckBox) return "on or off";
    return Number(Minimum()) + " to " + Number(Maximum());
}

void Parameters::Add(const PF_ParamDef& def) {
    Parameter p;
    p.index = static_cast<int>(m_list.size()) + 1;
    p.id = def.uu.id;
    p.kind = KindOf(def);
    p.name = NameOf(def);
    p.def = def;
    if (p.kind == Parameter::Kind::GroupEnd && !m_openGroups.empty()) m_openGroups.pop_back();
    p.depth = static_cast<int>(m_openGroups.size());
    for (const std::string& group : m_openGroups) p.path += group + '/';
    p.path += p.name;
    if (p.kind == Parameter::Kind::GroupStart) m_openGroups.push_back(p.name);
    m_list.push_back(std::move(p));
}

const Parameter& Parameters::Find(std::string_view nameOrId) const {
    const std::optional<int> id = Parsed<int>(nameOrId);
    const std::string folded = Folded(nameOrId);
    std::vector<std::string> paths;
    for (const Parameter& p : m_list) {
        if (!p.IsSettable()) continue;
        if (id ? p.id == *id : Folded(p.path) == folded) return p;
        paths.push_back(p.path);
    }
    std::string hint = id ? "" : DidYouMean(nameOrId, paths);
    if (hint.empty() && !paths.empty())
        hint = "; it has " + std::to_string(paths.size()) + ", from '" + paths.front() + "' to '" +
               paths.back() + "'";
    throw Error(ErrorKind::Usage, "the effect has no parameter " +
                                      (id ? "with the id " : std::string()) + "'" +
                                      std::string(nameOrId) + "'" + hint);
}

ParameterValues::ParameterValues(const Parameters& parameters) : m_parameters(&parameters) {
    for (const Parameter& p : parameters.All()) m_records.push_back(p.def);
}

void ParameterValues::Set(const Parameter& parameter, double value) {
    const std::string given = Number(value);
    if (!std::isfinite(value)) Reject(parameter, given, "that is no finite number");
    if (value < parameter.Minimum() || value > parameter.Maximum())
        Reject(parameter, given, "out of range");
    PF_ParamDef& record = m_records[static_cast<std::size_t>(parameter.index - 1)];
    if (parameter.kind == Parameter::Kind::Slider)
        record.u.fs_d.value = value;
    else if (value == 0.0 || value == 1.0)
        record.u.bd.value = value == 1.0;
    else
        Reject(parameter, given, "it has two states");
}

void ParameterValues::Set(const Parameter& parameter, std::string_view text) {
    std::optional<double> value = Parsed<double>(text);
    if (!value && parameter.kind == Parameter::Kind::CheckBox) value = CheckBoxWord(text);
    if (!value || !std::isfinite(*value))
        Reject(
            parameter, "'" + std::string(text) + "'",
            parameter.kind == Parameter::Kind::CheckBox ? "that is neither" : "that is no number");
    Set(parameter, *value);
}

void ParameterValues::Set(std::string_view assignment) {
    const auto equals = assignment.find('=');
    if (equals == std::string_view::npos || equals == 0)
        throw Error(ErrorKind::Usage,
                    "'" + std::string(assignment) +
                        "' sets nothing: write NAME=VALUE, as in Highlights/Red=12.5");
    Set(m_parameters->Find(assignment.substr(0, equals)), assignment.substr(equals + 1));
}

double ParameterValues::Get(const Parameter& parameter) const {
    const PF_ParamDef& record = m_records[static_cast<std::size_t>(parameter.index - 1)];
    return parameter.kind == Parameter::Kind::Slider ? record.u.fs_d.value : record.u.bd.value;
}

}  // namespace zel
