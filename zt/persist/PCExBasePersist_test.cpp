#include <rapidcheck.h>
#include <zt/persist/Cursor_test.hpp>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>
#include <vector>

namespace ZT {
namespace {

using testing::ElementsAre;

struct PCExBasePersist : CursorTest {
    /// Loads from a root whose child "X" holds `text`.
    void LoadX(const std::string& text) { Load("<R><X>" + text + "</X></R>"); }

    /// Starts loading without a current element.
    void LoadNothing() {
        NewDocument();
        Start(kLoading);
    }

    std::vector<double> LoadedDoubles(std::vector<double> held, const char* name, bool child) {
        CArray<double, double> array;
        for (const double value : held) array.Add(value);
        cursor->PersistArrayDouble(name, array, child);
        return {array.GetData(), array.GetData() + array.GetSize()};
    }

    std::vector<int> LoadedInts(std::vector<int> held, const char* name, bool child) {
        CArray<int, int> array;
        for (const int value : held) array.Add(value);
        cursor->PersistArrayInt(name, array, child);
        return {array.GetData(), array.GetData() + array.GetSize()};
    }
};

/// `value` as its six stored digits say it.
double SixDigits(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%g", value);
    return std::strtod(text, nullptr);
}

float SixDigits(float value) {
    char text[64];
    std::snprintf(text, sizeof text, "%g", static_cast<double>(value));
    return std::strtof(text, nullptr);
}

// One value.

TEST_F(PCExBasePersist, AnIntIsStoredInDecimalAndStaysWhenMissing) {
    Store();
    int v = -3;
    cursor->PersistInt("X", v);
    EXPECT_EQ(Xml(), "<R><X>-3</X></R>");
    Reload();
    v = 0;
    cursor->PersistInt("X", v);
    EXPECT_EQ(v, -3);
    cursor->PersistInt("Y", v);
    EXPECT_EQ(v, -3);
    LoadX("abc");
    cursor->PersistInt("X", v);
    EXPECT_EQ(v, -3);
    LoadNothing();
    cursor->PersistInt("X", v);
    EXPECT_EQ(v, -3);
}

TEST_F(PCExBasePersist, ABoolIsStoredAsADigitAndStaysWhenMissing) {
    Store();
    bool yes = true, no = false;
    cursor->PersistBool("X", yes);
    cursor->PersistBool("Y", no);
    EXPECT_EQ(Xml(), "<R><X>1</X><Y>0</Y></R>");
    Reload();
    yes = false;
    no = true;
    cursor->PersistBool("X", yes);
    cursor->PersistBool("Y", no);
    EXPECT_TRUE(yes);
    EXPECT_FALSE(no);
    cursor->PersistBool("Z", yes);
    EXPECT_TRUE(yes);
    LoadX("2");
    yes = false;
    cursor->PersistBool("X", yes);
    EXPECT_TRUE(yes);
}

TEST_F(PCExBasePersist, ATristateIsStoredAsItsNumber) {
    Store();
    ETri unknown = eUnknown, no = eFalse, yes = eTrue, odd = ETri(7);
    cursor->PersistNik("X", unknown);
    cursor->PersistNik("X", no);
    cursor->PersistNik("X", yes);
    cursor->PersistNik("X", odd);
    EXPECT_EQ(Xml(), "<R><X>-1</X><X>0</X><X>1</X><X>7</X></R>");
    EXPECT_EQ(odd, ETri(7)) << "storing changes nothing";
}

TEST_F(PCExBasePersist, ALoadedTristateIsOneOfTheThree) {
    const std::pair<const char*, ETri> cases[] = {
        {"-1", eUnknown}, {"0", eFalse}, {"1", eTrue}, {"7", eFalse}, {"-2", eFalse}};
    for (const auto& [text, expected] : cases) {
        LoadX(text);
        ETri v = expected == eTrue ? eFalse : eTrue;
        cursor->PersistNik("X", v);
        EXPECT_EQ(v, expected) << text;
    }
}

TEST_F(PCExBasePersist, AMissingTristateNormalisesTheOneThatIsThere) {
    const std::pair<int, ETri> cases[] = {{-1, eUnknown}, {0, eFalse}, {1, eTrue}, {7, eFalse}};
    for (const auto& [before, after] : cases) {
        for (int source = 0; source < 3; ++source) {
            if (source == 0) Load("<R/>");
            if (source == 1) LoadX("abc");
            if (source == 2) LoadNothing();
            ETri v = ETri(before);
            cursor->PersistNik("X", v);
            EXPECT_EQ(v, after) << before << ' ' << source;
        }
    }
}

TEST_F(PCExBasePersist, ADoubleKeepsSixSignificantDigits) {
    Store();
    double v = 0.1234567891;
    cursor->PersistDouble("X", v);
    EXPECT_EQ(Xml(), "<R><X>0.123457</X></R>");
    Reload();
    cursor->PersistDouble("X", v);
    EXPECT_EQ(v, 0.123457);
    cursor->PersistDouble("Y", v);
    EXPECT_EQ(v, 0.123457);
    LoadX("abc");
    cursor->PersistDouble("X", v);
    EXPECT_EQ(v, 0.123457);
}

TEST_F(PCExBasePersist, ALoadedDoubleHasAllTheDigitsOfItsText) {
    LoadX("0.1234567891");
    double v = 0;
    cursor->PersistDouble("X", v);
    EXPECT_EQ(v, 0.1234567891);
}

TEST_F(PCExBasePersist, AFloatIsStoredWithSixDigitsAndStaysWhenMissing) {
    Store();
    float v = 0.5f;
    cursor->PersistFloat("X", v);
    EXPECT_EQ(Xml(), "<R><X>0.5</X></R>");
    Reload();
    v = 0;
    cursor->PersistFloat("X", v);
    EXPECT_EQ(v, 0.5f);
    cursor->PersistFloat("Y", v);
    EXPECT_EQ(v, 0.5f);
    LoadX("x");
    cursor->PersistFloat("X", v);
    EXPECT_EQ(v, 0.5f);
}

TEST_F(PCExBasePersist, ADWORDIsStoredAsTheSignedNumberOfItsLow32Bits) {
    Store();
    for (uint64 v : {uint64{0xFFFFFFFF}, uint64{5}, uint64{0x700000006}, uint64{0x80000000}})
        cursor->PersistDWORD("X", v, false);
    EXPECT_EQ(Xml(), "<R><X>-1</X><X>5</X><X>6</X><X>-2147483648</X></R>");
}

TEST_F(PCExBasePersist, ALoadedDWORDHasNoHighHalf) {
    for (const bool unused : {false, true}) {
        uint64 v = 0x1234567800000000;
        LoadX("-1");
        cursor->PersistDWORD("X", v, unused);
        EXPECT_EQ(v, 0xFFFFFFFFu);
        LoadX("12abc");
        v = ~uint64{0};
        cursor->PersistDWORD("X", v, unused);
        EXPECT_EQ(v, 12u);
    }
}

TEST_F(PCExBasePersist, AMissingDWORDBecomesZeroUnlessThereIsNoCurrentElement) {
    uint64 v = 5;
    Load("<R/>");
    cursor->PersistDWORD("X", v, true);
    EXPECT_EQ(v, 0u);
    v = 5;
    LoadX("abc");
    cursor->PersistDWORD("X", v, true);
    EXPECT_EQ(v, 0u) << "a text that is no number does the same";
    v = 5;
    LoadNothing();
    cursor->PersistDWORD("X", v, true);
    EXPECT_EQ(v, 5u);
}

TEST_F(PCExBasePersist, AStringIsStoredAsItIsInAChildWhateverTheForm) {
    Store();
    CString s("a < b"), empty;
    cursor->PersistString("X", s, true);
    cursor->PersistString("Y", s, false);
    cursor->PersistString("Z", empty, true);
    EXPECT_EQ(Xml(), "<R><X>a &lt; b</X><Y>a &lt; b</Y><Z/></R>");
    Reload();
    s = "";
    cursor->PersistString("X", s, true);
    EXPECT_EQ(s, "a < b");
    cursor->PersistString("Z", s, true);
    EXPECT_EQ(s, "");
    cursor->PersistString(nullptr, s, false);
    EXPECT_EQ(s, "a < ba < b");
}

TEST_F(PCExBasePersist, AMissingStringEmptiesTheVariable) {
    CString s("before");
    Load("<R>text</R>");
    cursor->PersistString("X", s, true);
    EXPECT_EQ(s, "");
    s = "before";
    LoadNothing();
    cursor->PersistString("X", s, false);
    EXPECT_EQ(s, "");
}

TEST_F(PCExBasePersist, ColorsAreStoredInAnElementCo) {
    Store();
    float color[] = {0.25f, 0.5f, 1, 0};
    cursor->PersistColor(color);
    cursor->PersistColor4(color);
    EXPECT_EQ(Xml(), "<R><Co>0.25 0.5 1</Co><Co>0.25 0.5 1 0</Co></R>");
    cursor->PersistColor(nullptr);
    cursor->PersistColor4(nullptr);
    EXPECT_EQ(Xml(), "<R><Co>0.25 0.5 1</Co><Co>0.25 0.5 1 0</Co></R>");
}

TEST_F(PCExBasePersist, ColorsTakeAsManyValuesAsThereAre) {
    Load("<R><Co>0.25 0.5 1 0.75 2</Co><Co>7 8</Co></R>");
    float three[] = {9, 9, 9, 9}, four[] = {9, 9, 9, 9, 9};
    cursor->PersistColor(three);
    EXPECT_THAT(three, ElementsAre(0.25f, 0.5f, 1, 9));
    cursor->PersistColor4(four);
    EXPECT_THAT(four, ElementsAre(0.25f, 0.5f, 1, 0.75f, 9));
    cursor->m_nChildIndex = 1;
    cursor->PersistColor(three);
    EXPECT_THAT(three, ElementsAre(7, 8, 1, 9));
    EXPECT_EQ(cursor->m_nChildIndex, 0);
    cursor->PersistColor(nullptr);
    cursor->PersistColor4(nullptr);
}

TEST_F(PCExBasePersist, ANullColorLeavesTheChildIndex) {
    Load("<R><Co>1</Co><Co>2</Co></R>");
    cursor->m_nChildIndex = 1;
    cursor->PersistColor(nullptr);
    EXPECT_EQ(cursor->m_nChildIndex, 1);
    cursor->PersistColor4(nullptr);
    EXPECT_EQ(cursor->m_nChildIndex, 1);
    float color[] = {9, 9, 9};
    cursor->PersistColor(color);
    EXPECT_THAT(color, ElementsAre(2, 9, 9));
}

TEST_F(PCExBasePersist, AMissingColorLeavesTheValues) {
    Load("<R/>");
    float color[] = {9, 9, 9, 9};
    cursor->PersistColor(color);
    cursor->PersistColor4(color);
    EXPECT_THAT(color, ElementsAre(9, 9, 9, 9));
}

// Rows.

TEST_F(PCExBasePersist, RowsAreStoredInAChildWhateverTheForm) {
    Store();
    double doubles[] = {1, 0.5};
    int ints[] = {-3, 4};
    float floats[] = {0.25f, 2};
    unsigned char bytes[] = {255, 0};
    for (const bool child : {false, true}) {
        Store();
        EXPECT_EQ(cursor->PersistData("D", doubles, 2, child)->nodeName(), "D");
        cursor->PersistDataInt("I", ints, 2, child);
        cursor->PersistDataFloat("F", floats, 2, child);
        cursor->PersistDataByte("B", bytes, 2, child);
        EXPECT_EQ(Xml(), "<R><D>1 0.5</D><I>-3 4</I><F>0.25 2</F><B>255 0</B></R>");
        EXPECT_FALSE(cursor->PersistData("D", doubles, 0, child));
        EXPECT_EQ(cursor->GetStackPosn(), 1);
    }
}

TEST_F(PCExBasePersist, RowsAreLoadedBack) {
    Load("<R><D>1 0.5</D><I>-3 4</I><F>0.25 2</F><B>255 0</B></R>");
    double doubles[] = {9, 9, 9};
    int ints[] = {9, 9, 9};
    float floats[] = {9, 9, 9};
    unsigned char bytes[] = {9, 9, 9};
    EXPECT_EQ(cursor->PersistData("D", doubles, 3, true)->nodeName(), "D");
    cursor->PersistDataInt("I", ints, 3, true);
    cursor->PersistDataFloat("F", floats, 3, true);
    cursor->PersistDataByte("B", bytes, 3, true);
    EXPECT_THAT(doubles, ElementsAre(1, 0.5, 9));
    EXPECT_THAT(ints, ElementsAre(-3, 4, 9));
    EXPECT_THAT(floats, ElementsAre(0.25f, 2.0f, 9.0f));
    EXPECT_THAT(bytes, ElementsAre(255, 0, 9));
}

TEST_F(PCExBasePersist, RowsAreLoadedFromTheCurrentElement) {
    Load("<R>7 8</R>");
    double d = 9;
    int i = 9;
    float f = 9;
    unsigned char b = 9;
    EXPECT_TRUE(cursor->PersistData("D", &d, 1, false) == cursor->GetCurElem());
    cursor->PersistDataInt("I", &i, 1, false);
    cursor->PersistDataFloat("F", &f, 1, false);
    cursor->PersistDataByte("B", &b, 1, false);
    EXPECT_TRUE(d == 7 && i == 7 && f == 7 && b == 7);
}

TEST_F(PCExBasePersist, MissingRowsLeaveTheValues) {
    Load("<R/>");
    double d = 9;
    int i = 9;
    float f = 9;
    unsigned char b = 9;
    EXPECT_FALSE(cursor->PersistData("D", &d, 1, true));
    cursor->PersistDataInt("I", &i, 1, true);
    cursor->PersistDataFloat("F", &f, 1, true);
    cursor->PersistDataByte("B", &b, 1, true);
    EXPECT_TRUE(d == 9 && i == 9 && f == 9 && b == 9);
}

TEST_F(PCExBasePersist, ARowWithSomethingElseInItFillsWhatCameBeforeAndGivesNull) {
    LoadX("1 2 x");
    double values[] = {9, 9, 9};
    EXPECT_FALSE(cursor->PersistData("X", values, 3, true));
    EXPECT_THAT(values, ElementsAre(1, 2, 9));
}

// Rows of any length.

TEST_F(PCExBasePersist, AnAllocatedRowIsStoredAsARowOfIntegers) {
    Store();
    int values[] = {4, 5};
    int* p = values;
    ulong n = 2;
    cursor->PersistDataIntAuto("X", p, n, true);
    p = nullptr;
    cursor->PersistDataIntAuto("Y", p, n, true);
    EXPECT_EQ(Xml(), "<R><X>4 5</X></R>");
    EXPECT_EQ(n, 2u);
}

TEST_F(PCExBasePersist, AnAllocatedRowHasAsManyNumbersAsTheText) {
    int old = 9;
    int* p = &old;
    ulong n = 7;
    LoadX("4 5");
    cursor->m_nChildIndex = 1;
    cursor->PersistDataIntAuto("X", p, n, true);
    ASSERT_NE(p, &old);
    const std::unique_ptr<int[]> owner(p);
    EXPECT_EQ(n, 2u);
    EXPECT_EQ(p[0], 4);
    EXPECT_EQ(p[1], 5);
    EXPECT_EQ(cursor->m_nChildIndex, 1) << "which is not looked at";
}

TEST_F(PCExBasePersist, AnAllocatedRowCountsTheValuesThatWereRead) {
    const std::pair<const char*, std::vector<int>> cases[] = {
        {"4 x 6", {4}}, {"x", {}}, {" \n4 5\t ", {4, 4}}, {"4\t5", {4}}, {"4  5", {4, 5, 5}}};
    for (const auto& [text, expected] : cases) {
        LoadX(text);
        int* p = nullptr;
        ulong n = 7;
        cursor->PersistDataIntAuto("X", p, n, true);
        ASSERT_NE(p, nullptr) << text;
        const std::unique_ptr<int[]> owner(p);
        EXPECT_EQ(std::vector<int>(p, p + n), expected) << text;
    }
}

TEST_F(PCExBasePersist, ABlankTextSetsTheCountToZeroAndLeavesThePointer) {
    int old = 9;
    for (const char* text : {"  ", " \t\n", ""}) {
        int* p = &old;
        ulong n = 7;
        LoadX(text);
        cursor->PersistDataIntAuto("X", p, n, true);
        EXPECT_EQ(n, 0u);
        EXPECT_EQ(p, &old);
    }
}

TEST_F(PCExBasePersist, AMissingAllocatedRowChangesNothing) {
    int old = 9;
    int* p = &old;
    ulong n = 7;
    Load("<R>1 2</R>");
    cursor->PersistDataIntAuto("X", p, n, true);
    LoadNothing();
    cursor->PersistDataIntAuto("X", p, n, true);
    cursor->PersistDataIntAuto("X", p, n, false);
    EXPECT_EQ(n, 7u);
    EXPECT_EQ(p, &old);
}

TEST_F(PCExBasePersist, AnAllocatedRowMayBeTheCurrentElements) {
    Load("<R>1 2</R>");
    int* p = nullptr;
    ulong n = 0;
    cursor->PersistDataIntAuto("X", p, n, false);
    const std::unique_ptr<int[]> owner(p);
    EXPECT_EQ(std::vector<int>(p, p + n), (std::vector<int>{1, 2}));
}

TEST_F(PCExBasePersist, ArraysAreStoredAsRows) {
    Store();
    CArray<double, double> doubles;
    CArray<int, int> ints;
    cursor->PersistArrayDouble("D", doubles, true);
    cursor->PersistArrayInt("I", ints, true);
    EXPECT_EQ(Xml(), "<R/>");
    doubles.Add(1000000);
    doubles.Add(2);
    ints.Add(-3);
    cursor->PersistArrayDouble("D", doubles, true);
    cursor->PersistArrayInt("I", ints, false);
    EXPECT_EQ(Xml(), "<R><D>1e+06 2</D><I>-3</I></R>");
}

TEST_F(PCExBasePersist, ALargeNumberLengthensALoadedArrayByOneEntryEach) {
    LoadX("1e+06 2");
    EXPECT_THAT(LoadedDoubles({}, "X", true), ElementsAre(1000000, 2, 0));
    LoadX("1e+06 2 1e+07");
    EXPECT_THAT(LoadedDoubles({}, "X", true), ElementsAre(1000000, 2, 10000000, 0, 0));
    LoadX("1e-06 2");
    EXPECT_THAT(LoadedDoubles({}, "X", true), ElementsAre(1e-6, 2));
    LoadX("1e+06 2");
    EXPECT_THAT(LoadedInts({}, "X", true), ElementsAre(1, 2, 0));
}

TEST_F(PCExBasePersist, ASignInFrontOfANumberLengthensNoArray) {
    LoadX("+5 +6");
    EXPECT_THAT(LoadedInts({}, "X", true), ElementsAre(5, 6));
    EXPECT_THAT(LoadedDoubles({}, "X", true), ElementsAre(5, 6));
}

TEST_F(PCExBasePersist, EverySeparatorInsideANumberLengthensAnArray) {
    LoadX("1,5 2");
    EXPECT_THAT(LoadedDoubles({}, "X", true), ElementsAre(1, 2, 0));
    EXPECT_THAT(LoadedInts({}, "X", true), ElementsAre(1, 2, 0));
    LoadX("1:5 2");
    EXPECT_THAT(LoadedInts({}, "X", true), ElementsAre(1, 2, 0));
}

TEST_F(PCExBasePersist, AnEntryThatTheReadGivesNoValueKeepsWhatItHeld) {
    LoadX("1e+06 2");
    EXPECT_THAT(LoadedDoubles({7, 7, 7, 7}, "X", true), ElementsAre(1000000, 2, 7));
    LoadX("1 x 3");
    EXPECT_THAT(LoadedInts({7, 7, 7, 7}, "X", true), ElementsAre(1, 7, 7));
}

TEST_F(PCExBasePersist, AMissingElementEmptiesAnArray) {
    Load("<R/>");
    EXPECT_THAT(LoadedDoubles({7, 8}, "X", true), ElementsAre());
    EXPECT_THAT(LoadedInts({7, 8}, "X", true), ElementsAre());
    LoadNothing();
    EXPECT_THAT(LoadedDoubles({7, 8}, "X", false), ElementsAre());
    EXPECT_THAT(LoadedInts({7, 8}, "X", false), ElementsAre());
    LoadX(" +[] ");
    EXPECT_THAT(LoadedDoubles({7, 8}, "X", true), ElementsAre()) << "a text without words";
}

TEST_F(PCExBasePersist, AnArrayOfTheCurrentElementGetsItsSizeAloneFromThere) {
    Load("<R>1 2 3</R>");
    EXPECT_THAT(LoadedDoubles({}, "X", false), ElementsAre(0, 0, 0));
    EXPECT_THAT(LoadedInts({}, "X", false), ElementsAre(0, 0, 0));
    Load("<R>1 2 3<X> 8 9</X></R>");
    EXPECT_THAT(LoadedDoubles({}, "X", false), ElementsAre(8, 8, 9, 0, 0))
        << "by the child's blanks";
    EXPECT_THAT(LoadedInts({}, "X", false), ElementsAre(8, 8, 9, 0, 0));
}

TEST_F(PCExBasePersist, TheChildIndexOfAnArrayIsUsedUpByItsSize) {
    Load("<R><X>1</X><X>2 3</X></R>");
    cursor->m_nChildIndex = 1;
    EXPECT_THAT(LoadedDoubles({}, "X", true), ElementsAre(1, 0));
    EXPECT_EQ(cursor->m_nChildIndex, 0);
    cursor->m_nChildIndex = 1;
    EXPECT_THAT(LoadedInts({}, "X", true), ElementsAre(1, 0));
}

TEST_F(PCExBasePersist, TheChildIndexOfAnArrayOfTheCurrentElementSelectsTheDoublesAlone) {
    Load("<R>1 2<X>5</X><X>8</X></R>");
    cursor->m_nChildIndex = 1;
    EXPECT_THAT(LoadedInts({}, "X", false), ElementsAre(5, 0));
    EXPECT_EQ(cursor->m_nChildIndex, 1);
    EXPECT_THAT(LoadedDoubles({}, "X", false), ElementsAre(8, 0));
    EXPECT_EQ(cursor->m_nChildIndex, 0);
}

// Directions, failures, and the run as a whole.

TEST_F(PCExBasePersist, TheNeitherStateReads) {
    constexpr char kXml[] = "<R><X>5</X><Co>6 7 8 9</Co></R>";
    Load(kXml, kNeither);
    int v = 0;
    cursor->PersistInt("X", v);
    EXPECT_EQ(v, 5);
    double d = 0;
    cursor->PersistDouble("X", d);
    EXPECT_EQ(d, 5);
    CString s;
    cursor->PersistString("X", s, true);
    EXPECT_EQ(s, "5");
    bool b = false;
    cursor->PersistBool("X", b);
    EXPECT_TRUE(b);
    ETri t = eUnknown;
    cursor->PersistNik("X", t);
    EXPECT_EQ(t, eFalse);
    uint64 w = 0;
    cursor->PersistDWORD("X", w, false);
    EXPECT_EQ(w, 5u);
    float f[4] = {9, 9, 9, 9};
    cursor->PersistFloat("X", f[0]);
    EXPECT_EQ(f[0], 5);
    f[3] = 0;
    cursor->PersistColor(f);
    EXPECT_THAT(f, ElementsAre(6, 7, 8, 0));
    f[0] = f[3] = 0;
    cursor->PersistColor4(f);
    EXPECT_THAT(f, ElementsAre(6, 7, 8, 9));
    d = v = 0;
    EXPECT_TRUE(cursor->PersistData("X", &d, 1, true));
    cursor->PersistDataInt("X", &v, 1, true);
    cursor->PersistDataFloat("X", f + 1, 1, true);
    unsigned char byte = 0;
    cursor->PersistDataByte("X", &byte, 1, true);
    EXPECT_TRUE(d == 5 && v == 5 && f[1] == 5 && byte == 5);
    int* p = nullptr;
    ulong n = 0;
    cursor->PersistDataIntAuto("X", p, n, true);
    const std::unique_ptr<int[]> owner(p);
    EXPECT_EQ(n, 1u);
    EXPECT_THAT(LoadedDoubles({}, "X", true), ElementsAre(5));
    EXPECT_THAT(LoadedInts({}, "X", true), ElementsAre(5));
    EXPECT_EQ(Xml(), kXml);
}

TEST_F(PCExBasePersist, RealNumbersAndStringsHeedTheChildIndex) {
    Load("<R><X>1</X><X>2</X></R>");
    const auto select = [&] { cursor->m_nChildIndex = 1; };
    double d = 9;
    select();
    cursor->PersistDouble("X", d);
    EXPECT_TRUE(d == 2 && cursor->m_nChildIndex == 0);
    float f = 9;
    select();
    cursor->PersistFloat("X", f);
    EXPECT_TRUE(f == 2 && cursor->m_nChildIndex == 0);
    CString s;
    select();
    cursor->PersistString("X", s, true);
    EXPECT_EQ(s, "2");
    EXPECT_EQ(cursor->m_nChildIndex, 0);
    select();
    cursor->PersistString("X", s, false);
    EXPECT_EQ(s, "12");
    EXPECT_EQ(cursor->m_nChildIndex, 1) << "the current element needs no look-up";
}

TEST_F(PCExBasePersist, IntegersDoNotLookAtTheChildIndex) {
    Load("<R><X>1</X><X>0</X></R>");
    cursor->m_nChildIndex = 1;
    int i = 9, row = 9;
    bool b = false;
    ETri t = eUnknown;
    uint64 w = 9;
    unsigned char byte = 9;
    cursor->PersistInt("X", i);
    cursor->PersistBool("X", b);
    cursor->PersistNik("X", t);
    cursor->PersistDWORD("X", w, false);
    cursor->PersistDataInt("X", &row, 1, true);
    cursor->PersistDataByte("X", &byte, 1, true);
    EXPECT_TRUE(i == 1 && b && t == eTrue && w == 1 && row == 1 && byte == 1);
    EXPECT_EQ(cursor->m_nChildIndex, 1);
}

TEST_F(PCExBasePersist, StoringWithoutADocumentRaisesThePointerFailure) {
    pc.m_mode = kStoring;
    PCExBase bare;
    bare.m_pPC = &pc;
    int i = 1;
    bool b = true;
    ETri t = eTrue;
    double d = 1;
    float f[4] = {};
    uint64 w = 1;
    CString s;
    int* p = &i;
    ulong n = 1;
    unsigned char byte = 1;
    CArray<double, double> doubles;
    doubles.Add(1);
    CArray<int, int> ints;
    ints.Add(1);
    EXPECT_EQ(Failure([&] { bare.PersistInt("X", i); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { bare.PersistBool("X", b); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { bare.PersistNik("X", t); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { bare.PersistDouble("X", d); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { bare.PersistFloat("X", *f); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { bare.PersistDWORD("X", w, false); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { bare.PersistString("X", s, true); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { bare.PersistColor(f); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { bare.PersistColor4(f); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { bare.PersistData("X", &d, 1, true); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { bare.PersistDataInt("X", &i, 1, true); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { bare.PersistDataFloat("X", f, 1, true); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { bare.PersistDataByte("X", &byte, 1, true); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { bare.PersistDataIntAuto("X", p, n, true); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { bare.PersistArrayDouble("X", doubles, true); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { bare.PersistArrayInt("X", ints, true); }), kPointerFailure);
}

/// A text with its font, stored as such records are.
struct Label {
    CString text{"Text"}, font{"Arial"};
    int size = 100;
    unsigned char color[3] = {255, 0, 0}, back[3] = {0, 128, 255};

    void PersistFont(PCExBase& cursor) {
        if (!cursor.PersistElement("Ft", true)) return;
        cursor.PersistString("N", font, true);
        cursor.PersistInt("Sz", size);
        cursor.PersistDataByte("Co", color, 3, true);
        cursor.PersistDataByte("Bk", back, 3, true);
        cursor.PopElement(false);
    }

    void PersistXML(PCExBase& cursor) {
        if (!cursor.PersistElement("Tx", true)) return;
        cursor.PersistString("St", text, true);
        PersistFont(cursor);
        cursor.PopElement(false);
    }
};

TEST_F(PCExBasePersist, AStoredObjectHasOneElementALineIndentedByItsDepth) {
    Store(true);
    Label label;
    label.PersistXML(*cursor);
    EXPECT_EQ(cursor->GetStackPosn(), 1);
    cursor->PopElement(false);
    EXPECT_EQ(Xml(),
              "<R>"
              "\n\t<Tx>"
              "\n\t\t<St>Text</St>"
              "\n\t\t<Ft>"
              "\n\t\t\t<N>Arial</N>"
              "\n\t\t\t<Sz>100</Sz>"
              "\n\t\t\t<Co>255 0 0</Co>"
              "\n\t\t\t<Bk>0 128 255</Bk>"
              "\n\t\t</Ft>"
              "\n\t</Tx>"
              "\n</R>");
    EXPECT_EQ(cursor->GetStackPosn(), 0);
}

TEST_F(PCExBasePersist, AStoredObjectLoadsWithAndWithoutIndentation) {
    for (const bool indent : {false, true}) {
        Store(indent);
        Label stored;
        stored.size = 7;
        stored.text = "  two  blanks ";
        stored.PersistXML(*cursor);
        Reload();
        Label loaded;
        loaded.text = loaded.font = "";
        loaded.color[0] = loaded.back[1] = 9;
        loaded.PersistXML(*cursor);
        EXPECT_EQ(loaded.text, stored.text);
        EXPECT_EQ(loaded.font, stored.font);
        EXPECT_EQ(loaded.size, 7);
        EXPECT_THAT(loaded.color, ElementsAre(255, 0, 0));
        EXPECT_THAT(loaded.back, ElementsAre(0, 128, 255));
        EXPECT_EQ(cursor->GetStackPosn(), 1);
    }
}

TEST_F(PCExBasePersist, IndentationIsNotInTheWayOfALoad) {
    Store(true);
    Label stored;
    stored.size = 7;
    stored.PersistXML(*cursor);
    ASSERT_EQ(cursor->GetCurElem()->firstChild()->text(), "\n\t");
    pc.m_mode = kLoading;
    Label loaded;
    loaded.text = "";
    loaded.PersistXML(*cursor);
    EXPECT_EQ(loaded.text, "Text");
    EXPECT_EQ(loaded.size, 7);
    EXPECT_EQ(cursor->GetStackPosn(), 1);
}

TEST_F(PCExBasePersist, AnObjectThatStandsOnItsElementClosesItOnStoringAlone) {
    const auto persist = [&](int& v) {
        if (!cursor->PersistElement("O", false)) return false;
        cursor->PersistInt("V", v);
        cursor->PopIfStoring();
        return true;
    };
    Store();
    int v = 3;
    EXPECT_TRUE(persist(v));
    EXPECT_EQ(Xml(), "<R><O><V>3</V></O></R>");
    EXPECT_EQ(cursor->GetStackPosn(), 1);
    Reload();
    EXPECT_FALSE(persist(v));
    ASSERT_TRUE(cursor->PersistElement("O", true));
    v = 0;
    EXPECT_TRUE(persist(v));
    EXPECT_EQ(v, 3);
    EXPECT_EQ(cursor->GetStackPosn(), 2);
}

// Laws.

TEST_F(PCExBasePersist, WhatIsStoredLoadsToSixDigits) {
    EXPECT_TRUE(rc::check([this](double d, float f, int i, bool b, const std::vector<double>& row) {
        Store(b);
        const double d0 = d;
        const float f0 = f;
        const int i0 = i;
        std::vector<double> values = row;
        const auto persist = [&] {
            cursor->PersistDouble("D", d);
            cursor->PersistFloat("F", f);
            cursor->PersistInt("I", i);
            cursor->PersistBool("B", b);
            cursor->PersistData("Row", values.data(), static_cast<ulong>(values.size()), true);
        };
        const bool b0 = b;
        persist();
        Reload();
        d = 0;
        f = 0;
        i = 0;
        b = !b0;
        values.assign(values.size(), -1);
        persist();
        RC_ASSERT(d == SixDigits(d0));
        RC_ASSERT(f == SixDigits(f0));
        RC_ASSERT(i == i0);
        RC_ASSERT(b == b0);
        for (std::size_t k = 0; k < row.size(); ++k) RC_ASSERT(values[k] == SixDigits(row[k]));
    }));
}

TEST_F(PCExBasePersist, ASecondStoreIsTheSameAsTheFirst) {
    EXPECT_TRUE(rc::check([this](const std::vector<double>& row, const std::vector<int>& ints) {
        std::vector<double> doubles = row;
        std::vector<int> integers = ints;
        const auto persist = [&] {
            cursor->PersistData("D", doubles.data(), static_cast<ulong>(doubles.size()), true);
            cursor->PersistDataInt("I", integers.data(), static_cast<ulong>(integers.size()), true);
        };
        Store();
        persist();
        const std::string first = Xml();
        Reload();
        persist();
        RC_ASSERT(integers == ints);
        Store();
        persist();
        RC_ASSERT(Xml() == first);
    }));
}

TEST_F(PCExBasePersist, EveryStringOfPrintableTextComesBack) {
    EXPECT_TRUE(rc::check([this] {
        const auto text = *rc::gen::container<std::string>(
            rc::gen::element('a', ' ', '<', '>', '&', '"', '\'', '\t', '\n', '\r', ']', '-'));
        Store(true);
        CString s(text.c_str());
        cursor->PersistString("S", s, true);
        Reload();
        s = "other";
        cursor->PersistString("S", s, true);
        RC_ASSERT(std::string(s) == text);
    }));
}

}  // namespace
}  // namespace ZT
