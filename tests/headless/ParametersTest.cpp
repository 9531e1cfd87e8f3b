#include "headless/Parameters.h"

#include "abi/HostCodes.h"
#include "tests/headless/Thrown.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

namespace {

using namespace zel;
using namespace zel::test;

PF_ParamDef Def(PF_ParamType type, const char* name, A_long id) {
    PF_ParamDef def{};
    def.param_type = type;
    def.uu.id = id;
    char* field = zel::abi::ParamName(def);
    for (int i = 0; i < 32 && (i == 0 || name[i - 1]); ++i) field[i] = name[i];
    return def;
}
PF_ParamDef SliderDef(const char* name, A_long id, float low, float high, float initial) {
    PF_ParamDef def = Def(PF_Param_FLOAT_SLIDER, name, id);
    def.u.fs_d.valid_min = low;
    def.u.fs_d.valid_max = high;
    def.u.fs_d.value = def.u.fs_d.dephault = initial;
    def.u.fs_d.precision = 2;
    return def;
}

class ParametersTest : public testing::Test {
protected:
    ParametersTest() {
        list.Add(Def(PF_Param_GROUP_START, "Film", 1000));
        list.Add(SliderDef("White Point", 1, 0, 1023, 685));
        list.Add(Def(PF_Param_GROUP_START, "Low-Light", 1000));
        list.Add(SliderDef("Gamma", 3, 0, 5, 0.6f));
        list.Add(Def(PF_Param_GROUP_END, "", 1000));
        list.Add(SliderDef("Gamma", 5, -1, 1, 0));
        list.Add(Def(PF_Param_GROUP_END, "", 1000));
        list.Add(Def(5, "Tint", 7));
        PF_ParamDef box = Def(PF_Param_CHECKBOX, "Lin_To_Log", 8);
        box.u.bd.value = box.u.bd.dephault = 1;
        list.Add(box);
    }
    Parameters list;
};

TEST_F(ParametersTest, AsRegistered) {
    using Kind = Parameter::Kind;
    const struct {
        int index, id;
        Kind kind;
        const char* path;
        int depth;
    } rows[] = {
        {1, 1000, Kind::GroupStart, "Film", 0},
        {2, 1, Kind::Slider, "Film/White Point", 1},
        {3, 1000, Kind::GroupStart, "Film/Low-Light", 1},
        {4, 3, Kind::Slider, "Film/Low-Light/Gamma", 2},
        {5, 1000, Kind::GroupEnd, "Film/", 1},
        {6, 5, Kind::Slider, "Film/Gamma", 1},
        {7, 1000, Kind::GroupEnd, "", 0},
        {8, 7, Kind::Other, "Tint", 0},
        {9, 8, Kind::CheckBox, "Lin_To_Log", 0},
    };
    ASSERT_EQ(list.All().size(), std::size(rows));
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        const Parameter& p = list.All()[i];
        SCOPED_TRACE(rows[i].path);
        EXPECT_EQ(p.index, rows[i].index);
        EXPECT_EQ(p.id, rows[i].id);
        EXPECT_EQ(p.kind, rows[i].kind);
        EXPECT_EQ(p.path, rows[i].path);
        EXPECT_EQ(p.depth, rows[i].depth);
        EXPECT_EQ(p.IsSettable(), rows[i].kind == Kind::Slider || rows[i].kind == Kind::CheckBox);
    }
    EXPECT_EQ(list.All()[3].Default(), 0.6f);
    EXPECT_EQ(list.All()[3].Precision(), 2);
    EXPECT_EQ(list.All()[1].Range(), "0 to 1023");
    EXPECT_EQ(list.All()[8].Range(), "on or off");
    EXPECT_EQ(list.All()[8].Default(), 1.0f);
}

TEST_F(ParametersTest, GroupEndsWithoutGroupDoNoHarm) {
    Parameters odd;
    odd.Add(Def(PF_Param_GROUP_END, "", 1000));
    odd.Add(SliderDef("Alone", 1, 0, 1, 0));
    EXPECT_EQ(odd.Find("alone").path, "Alone");
}

TEST_F(ParametersTest, ANameWithoutTerminatorEndsWithItsField) {
    Parameters odd;
    odd.Add(SliderDef("0123456789012345678901234567890123456789", 1, 0, 1, 0));
    EXPECT_EQ(odd.All()[0].name, "01234567890123456789012345678901");
}

TEST_F(ParametersTest, FoundByPathAsPeopleTypeIt) {
    for (const char* path : {"Film/White Point", "film/whitepoint", "FILM.WHITE_POINT",
                             "film/white-point", " film . white point "})
        EXPECT_EQ(list.Find(path).id, 1) << path;
    EXPECT_EQ(list.Find("film.lowlight.gamma").id, 3);
    EXPECT_EQ(list.Find("film/gamma").id, 5);
    EXPECT_EQ(list.Find("lin to log").id, 8);
}

TEST_F(ParametersTest, FoundById) {
    for (const int id : {1, 3, 5, 8}) EXPECT_EQ(list.Find(std::to_string(id)).id, id);
    EXPECT_EQ(list.Find("+8").id, 8);
    EXPECT_EQ(list.Find("008").id, 8);
}

TEST_F(ParametersTest, NotFound) {
    const struct {
        const char *name, *says;
    } cases[] = {
        {"gamma", "did you mean Film/Low-Light/Gamma or Film/Gamma?"},
        {"Film/White Pint", "did you mean Film/White Point?"},
        {"Film", "did you mean Film/White Point, Film/Low-Light/Gamma or Film/Gamma?"},
        {"exposure", "it has 4, from 'Film/White Point' to 'Lin_To_Log'"},
        {"Tint", "no parameter 'Tint'"},
        {"1000", "no parameter with the id '1000'; it has 4"},
        {"7", "no parameter with the id '7'"},
        {"99999999999999999999", "no parameter"},
        {"", "no parameter ''"},
        {"film//gamma", "'film//gamma'"},
    };
    for (const auto& c : cases) {
        const Error e = Thrown([&] { list.Find(c.name); });
        EXPECT_EQ(e.Kind(), ErrorKind::Usage);
        EXPECT_TRUE(Says(e, c.says));
    }
    EXPECT_TRUE(Says(Thrown([] { Parameters().Find("x"); }), "no parameter 'x'"));
}

// --- values ---------------------------------------------------------------------

class ValuesTest : public ParametersTest {
protected:
    double Get(const char* path) { return values.Get(list.Find(path)); }
    void ExpectRefused(const std::string& assignment, const std::string& says) {
        const Error e = Thrown([&] { values.Set(assignment); });
        EXPECT_EQ(e.Kind(), ErrorKind::Usage) << assignment;
        EXPECT_TRUE(Says(e, says));
    }
    ParameterValues values{list};
};

TEST_F(ValuesTest, DefaultsToBeginWith) {
    EXPECT_EQ(Get("1"), 685.0);
    EXPECT_EQ(Get("3"), 0.6f);
    EXPECT_EQ(Get("8"), 1.0);
    EXPECT_EQ(values.Records().size(), list.All().size());
    EXPECT_EQ(&values.List(), &list);
}

TEST_F(ValuesTest, TextsOfNumbers) {
    const std::pair<const char*, double> cases[] = {
        {"0", 0},       {"5", 5},    {"0.6", 0.6},       {"+1.25", 1.25},
        {"1e-3", 1e-3}, {".5", 0.5}, {"4.9999", 4.9999}, {"-0", 0}};
    for (const auto& [text, value] : cases) {
        values.Set(std::string("film/lowlight/gamma=") + text);
        EXPECT_EQ(Get("3"), value) << text;
        EXPECT_EQ(values.Records()[3].u.fs_d.value, value) << text;
    }
}

TEST_F(ValuesTest, TheLastAssignmentCounts) {
    values.Set("5=-1");
    values.Set("5=1");
    EXPECT_EQ(Get("5"), 1.0);
    EXPECT_EQ(Get("1"), 685.0) << "another moved";
}

TEST_F(ValuesTest, NoNumbers) {
    for (const std::string text : {"", "abc", "nan", "-nan", "inf", "-inf", "1x", "1 ", " 1", "0x1",
                                   "1,5", "++1", "+-1", "+", "on", "1=2"})
        ExpectRefused("Film/Gamma=" + text,
                      "'Film/Gamma' cannot be '" + text + "': that is no number; it takes -1 to 1");
}

TEST_F(ValuesTest, OutOfRange) {
    for (const std::string text : {"1.0000000001", "-1.5", "1e+300", "5"})
        ExpectRefused("Film/Gamma=" + text,
                      "'Film/Gamma' cannot be " + text + ": out of range; it takes -1 to 1");
    ExpectRefused("3=5.1", "it takes 0 to 5");
}

TEST_F(ValuesTest, NumbersThatAreNotFinite) {
    for (const double value :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity()}) {
        const Error e = Thrown([&] { values.Set(list.Find("5"), value); });
        EXPECT_EQ(e.Kind(), ErrorKind::Usage);
        EXPECT_TRUE(Says(e, "no finite number"));
    }
    EXPECT_EQ(Get("5"), 0.0);
}

TEST_F(ValuesTest, CheckBoxWords) {
    for (const char* word : {"off", "OFF", "false", "no", "0", "0.0"}) {
        values.Set("8=1");
        values.Set(std::string("lintolog=") + word);
        EXPECT_EQ(Get("8"), 0.0) << word;
        EXPECT_EQ(values.Records()[8].u.bd.value, 0) << word;
    }
    for (const char* word : {"on", "On", "true", "yes", "1", "+1"}) {
        values.Set("8=0");
        values.Set(std::string("lintolog=") + word);
        EXPECT_EQ(Get("8"), 1.0) << word;
    }
    ExpectRefused("8=maybe", "'Lin_To_Log' cannot be 'maybe': that is neither; it takes on or off");
    ExpectRefused("8=", "'Lin_To_Log' cannot be '': that is neither");
    ExpectRefused("8=2", "'Lin_To_Log' cannot be 2: out of range; it takes on or off");
    ExpectRefused("8=0.5", "'Lin_To_Log' cannot be 0.5: it has two states; it takes on or off");
}

TEST_F(ValuesTest, NoAssignments) {
    for (const char* text : {"", "Film/Gamma", "=1", "="})
        ExpectRefused(text, std::string("'") + text + "' sets nothing: write NAME=VALUE");
    ExpectRefused("Tint=1", "no parameter 'Tint'");
}

}  // namespace
