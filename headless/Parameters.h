#pragma once

/// The parameters of an effect as its module registered them, and a setting of them.

#include "abi/HostTypes.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zel {

/// One registered parameter.
struct Parameter {
    enum class Kind { GroupStart, GroupEnd, Slider, CheckBox, Other };

    int index;  // the host's: 0 is the input layer, the first one registered is 1
    int id;     // what a project stores; groups may share one
    Kind kind;
    std::string name;
    std::string path;  // with the enclosing groups: "Highlights/Red"
    int depth;         // enclosing groups
    PF_ParamDef def;   // as registered, with the default as its value

    bool IsSettable() const { return kind == Kind::Slider || kind == Kind::CheckBox; }
    float Minimum() const;
    float Maximum() const;
    float Default() const;
    int Precision() const;      // decimal places shown; 0 for a check box
    std::string Range() const;  // "-100 to 100", "on or off"
};

/// The list, in the order of registration.
class Parameters {
public:
    /// Appends a copy of what the module hands over.
    void Add(const PF_ParamDef& def);

    std::span<const Parameter> All() const { return m_list; }

    /// A slider or check box by id ("8") or by path: upper or lower case, '/' or '.'
    /// between the groups; blanks, '-' and '_' do not count. Throws Error(Usage) with
    /// the nearest names.
    const Parameter& Find(std::string_view nameOrId) const;

private:
    std::vector<Parameter> m_list;
    std::vector<std::string> m_openGroups;
};

/// Values for every parameter of a list, defaults to begin with. Keeps a reference
/// to the list.
class ParameterValues {
public:
    explicit ParameterValues(const Parameters& parameters);

    /// Throws Error(Usage) when the value is not a number or outside the range.
    void Set(const Parameter& parameter, double value);

    /// The same from text; a check box also takes on, off, true, false, yes, no.
    void Set(const Parameter& parameter, std::string_view text);

    /// "Highlights/Red=12.5"; throws Error(Usage) when anything is wrong with it.
    void Set(std::string_view assignment);

    double Get(const Parameter& parameter) const;

    const Parameters& List() const { return *m_parameters; }

    /// The records as a host hands them to the effect: element i is parameter i + 1.
    std::span<const PF_ParamDef> Records() const { return m_records; }

private:
    const Parameters* m_parameters;
    std::vector<PF_ParamDef> m_records;
};

}  // namespace zel
