#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "platform/core/CObject.h"
#include "platform/core/CPointEx.h"
#include "platform/core/CString.h"
#include "platform/core/StringTable.h"
#include "tests/core/Limits.h"

namespace {

TEST(Rounding, HalvesGoAwayFromZeroAndWildValuesSaturate) {
    const struct {
        std::int32_t rounded;
        std::vector<double> values;
    } cases[] = {{0, {0.0, -0.0, 0.4999, kNaN}},
                 {1, {0.5, 0.49999999999999994}},
                 {-1, {-0.5, -1.4999}},
                 {3, {2.5}},
                 {-3, {-2.5}},
                 {kMax, {2147483646.5, 2147483647.4, 3e9, kInfinity}},
                 {kMin, {-2147483648.4, -3e9, -kInfinity}}};
    for (const auto& one : cases)
        for (const double value : one.values) EXPECT_EQ(RoundHalfAway(value), one.rounded) << value;
}

TEST(Geometry, SumsSaturateAndRealUnitsRound) {
    EXPECT_EQ(CPoint(kMax, kMin) + CPoint(1, -1), CPoint(kMax, kMin));
    EXPECT_EQ(CPoint(kMin, kMax) - CPoint(1, -1), CPoint(kMin, kMax));
    EXPECT_EQ(AddSaturated(1, std::numeric_limits<std::int64_t>::max()), kMax);
    EXPECT_EQ(AddSaturated(-1, std::numeric_limits<std::int64_t>::min()), kMin);
    EXPECT_EQ(CRect(kMin, 0, kMax, 1).Width(), kMax);
    const CPoint rounded = CPointEx(2.5, -2.5);
    EXPECT_EQ(rounded, CPoint(3, -3));
    const CSize size = CSizeEx(0.4, 1e300);
    EXPECT_EQ(size, CSize(0, kMax));
}

TEST(CString, ConvertsBothWaysAndToleratesNull) {
    const char* none = nullptr;
    CString text = none;
    EXPECT_TRUE(text.IsEmpty());
    text = "Ær";
    text += text;
    EXPECT_STREQ(text, "ÆrÆr");
    EXPECT_EQ(text.GetLength(), 6);
    EXPECT_EQ(text.Mid(6, 99), "");
    EXPECT_EQ(CString("abc").Left(-1), "");
    EXPECT_EQ(CString("a.b.c").Find(".", 2), 3);
    EXPECT_EQ(CString("abc").Find("c", 4), -1);
}

TEST(CString, FormatTakesItsOwnTextAndAnyLength) {
    CString text = "abc";
    text.Format("%s-%s", text.GetString(), text.GetString());
    EXPECT_EQ(text, "abc-abc");
    const std::string longText(100000, 'x');
    text.Format("%s!", longText.c_str());
    EXPECT_EQ(text.GetLength(), 100001);
}

TEST(StringTable, TheTableRegisteredLastWinsUntilItIsUnloaded) {
    static constexpr StringResource kOwn[] = {{65001, "library"}, {65002, "other"}};
    static constexpr StringResource kHost[] = {{65001, "host"}};
    const StringTable own(kOwn);
    CString text;
    {
        const StringTable host(kHost);
        EXPECT_TRUE(text.LoadString(65001));
        EXPECT_EQ(text, "host");
        EXPECT_STREQ(FindStringResource(65002), "other");
    }
    EXPECT_STREQ(FindStringResource(65001), "library");
    EXPECT_FALSE(text.LoadString(65003));
    EXPECT_EQ(text, "host");
}

class CBase : public CObject {
    DECLARE_DYNAMIC(CBase)
};
class CMade : public CBase {
    DECLARE_DYNCREATE(CMade)
};
IMPLEMENT_DYNAMIC(CBase, CObject)
IMPLEMENT_DYNCREATE(CMade, CBase)

TEST(CObject, KnowsItsKindAndIsCreatedByName) {
    const CRuntimeClass* record = CRuntimeClass::FromName("CMade");
    ASSERT_NE(record, nullptr);
    const std::unique_ptr<CObject> made(record->CreateObject());
    ASSERT_NE(made, nullptr);
    EXPECT_TRUE(made->IsKindOf(RUNTIME_CLASS(CBase)));
    EXPECT_TRUE(made->IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(CBase().IsKindOf(RUNTIME_CLASS(CMade)));
    EXPECT_EQ(RUNTIME_CLASS(CBase)->CreateObject(), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName("CNone"), nullptr);
}

}  // namespace
