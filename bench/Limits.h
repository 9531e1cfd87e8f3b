#pragma once

/// What the library's speed is held to, and whether a run of the table held it.

#include <map>
#include <string>
#include <vector>

namespace zel::bench {

/// A row of the table.
struct Figures {
    double plainTime = 0;  // of the copy or clear beside it
    double plain = 0;      // x memcpy or x memset
    double scalar = 0;     // times faster than the scalar row
};

/// The figures of a run. Of a row that was measured several times those stand beside which
/// the plain copy was quickest: the machine was quietest then.
class Results {
public:
    /// `row` as in the table, "lut 8/avx512/1920x1080/cold".
    void Add(const std::string& row, const Figures& figures);

    /// `place` is "1920x1080/cold". Without a variant the last one, which is in use. Null
    /// when there is none.
    const Figures* Find(const std::string& routine, const std::string& variant,
                        const std::string& place) const;

private:
    struct Variant {
        std::string name;
        Figures figures;
    };
    std::map<std::string, std::vector<Variant>> m_rows;  // by routine and place
};

/// Prints every limit beside what was reached.
void PrintLimits(const Results& results);

/// A pattern of the rows that missed their limits; empty when all are held.
std::string MissedRows(const Results& results);

}  // namespace zel::bench
