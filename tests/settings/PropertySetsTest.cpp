// Every persistent property set against the table of its values: names, encodings, defaults, and what a value
// that is missing or no number reads as.
#include <sys/wait.h>

#include <cstdlib>

#include "platform/registry/CWinApp.h"
#include "settings/CAxisProperties.h"
#include "settings/CColorProperties.h"
#include "settings/CStyleProperties.h"
#include "settings/CTiledLayoutProperties.h"
#include "settings/Fields.h"
#include "settings/KDrawProperty.h"
#include "settings/ProcessingProperties.h"
#include "tests/registry/RegistryFixture.h"

namespace {

template <class Set>
struct Value {
    const char* name;
    typename settings::Field<Set>::Member member;
    const char* reset;
    const char* put;                // another for each value, so that two that are mixed up show
    const char* stored;             // what is then in the store
    const char* loaded;             // and what comes back from there
    const char* missing = nullptr;  // null: the value before stays
};

std::string TextOf(const CString& text) { return text.GetString(); }
template <class Number>
std::string TextOf(Number number) {
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", static_cast<double>(number));
    return text;
}

template <class Set>
class Walk {
  public:
    template <std::size_t N>
    explicit Walk(const Value<Set> (&rows)[N]) : rows_(rows, rows + N) {}

    void Check() {
        Set set;
        Expect(set, "at first", [](const Value<Set>& row) { return row.reset; });
        PutAll(set);
        {
            const CWinApp host("Host");
            set.SaveToRegistry("Section");
            ExpectStored();
        }
        ExpectMissing("no application");
        const CWinApp host("Host");
        ExpectMissing("no section");
        for (const Value<Set>& row : rows_)
            AfxGetApp()->WriteProfileString("Empty", row.name, IsReal(row) ? "nan" : nullptr);
        ExpectMissing("no numbers");
        Set loaded;
        loaded.LoadFromRegistry("Section");
        Expect(loaded, "loaded", [](const Value<Set>& row) { return row.loaded; });
        Set copy = loaded;
        copy.SetDefaultValues();
        Expect(copy, "reset", [](const Value<Set>& row) { return row.reset; });
    }

  private:
    static bool IsReal(const Value<Set>& row) {
        return std::holds_alternative<float Set::*>(row.member) ||
               std::holds_alternative<double Set::*>(row.member);
    }
    // Out of line: knowing the object, the compiler takes the members of other kinds for places outside of
    // it.
    [[gnu::noinline]] void PutAll(Set& set) {
        settings::ForEachField(set, rows_, [](const Value<Set>& row, auto& field) {
            using T = std::remove_reference_t<decltype(field)>;
            if constexpr (std::is_same_v<T, CString>)
                field = row.put;
            else
                field = static_cast<T>(std::strtod(row.put, nullptr));
        });
    }
    template <class Choose>
    [[gnu::noinline]] void Expect(Set& set, const char* when, Choose choose) {
        settings::ForEachField(set, rows_, [&](const Value<Set>& row, auto& field) {
            EXPECT_EQ(TextOf(field), choose(row)) << row.name << " " << when;
        });
    }
    void ExpectStored() {
        CWinApp& host = *AfxGetApp();
        Set set;
        settings::ForEachField(set, rows_, [&](const Value<Set>& row, const auto& field) {
            using T = std::decay_t<decltype(field)>;
            std::string stored = host.GetProfileString("Section", row.name).GetString();
            if constexpr (std::is_integral_v<T>)
                stored = TextOf(static_cast<T>(host.GetProfileInt("Section", row.name, 77)));
            EXPECT_EQ(stored, row.stored) << row.name;
        });
    }
    void ExpectMissing(const char* when) {
        Set set;
        PutAll(set);
        set.LoadFromRegistry("Empty");
        Expect(set, when, [](const Value<Set>& row) { return row.missing ? row.missing : row.put; });
    }

    std::vector<Value<Set>> rows_;
};

using PropertySets = RegistryFixture;

TEST_F(PropertySets, OfTheView) {
    using A = CAxisProperties;
    Walk<A>({{"ShowX", &A::ShowX, "1", "2", "2", "2"},
             {"ShowY", &A::ShowY, "1", "3", "3", "3"},
             {"UnitX", &A::UnitX, "s", "Tage, ä", "Tage, ä", "Tage, ä"},
             {"UnitY", &A::UnitY, "m", "µm", "µm", "µm"},
             {"MinX", &A::MinX, "-1", "4.25", "4.25", "4.25"},
             {"MaxX", &A::MaxX, "1", "1.234", "1.23", "1.2300000190734863"},
             {"XAutoScale", &A::XAutoScale, "1", "5", "5", "5"},
             {"MinY", &A::MinY, "-1", "-250.5", "-250.50", "-250.5"},
             {"MaxY", &A::MaxY, "1", "1000", "1000.00", "1000"},
             {"YAutoScale", &A::YAutoScale, "1", "6", "6", "6"},
             {"DrawXLines", &A::DrawXLines, "1", "7", "7", "7"},
             {"DrawYLines", &A::DrawYLines, "1", "8", "8", "8"},
             {"XAxisPos", &A::XAxisPos, "2", "9", "9", "9"},
             {"YAxisPos", &A::YAxisPos, "0", "-10", "-10", "-10"},
             {"PositiveUp", &A::PositiveUp, "1", "11", "11", "11"}})
        .Check();
    using C = CColorProperties;
    Walk<C>({{"BackGround Color", &C::background, "16777215", "1", "1", "1"},
             {"Grid Color", &C::grid, "8421504", "2", "2", "2"},
             {"Dot Color", &C::dots, "8542976", "3", "3", "3"},
             {"Axis Color", &C::axis, "0", "4294967295", "4294967295", "4294967295"},
             {"Modified Color", &C::modified, "0", "5", "5", "5"},
             {"Region Color", &C::region, "16769401", "6", "6", "6"}})
        .Check();
    using S = CStyleProperties;
    Walk<S>({{"LineStyle", &S::LineStyle, "0", "3", "3", "3"},
             {"DotSize", &S::DotSize, "1", "4", "4", "4"},
             {"DrawStyle", &S::DrawStyle, "2", "5", "5", "5"}})
        .Check();
    using T = CTiledLayoutProperties;
    Walk<T>({{"NumSourcesPerTile", &T::NumSourcesPerTile, "1", "7", "7", "7", "1"},
             {"NumColumns", &T::NumColumns, "2", "8", "8", "8", "2"},
             {"NumRows", &T::NumRows, "2", "9", "9", "9", "2"}})
        .Check();
}

TEST_F(PropertySets, OfTheProcessing) {
    using C = CScaleProperties;
    Walk<C>({{"Scale_offset", &C::scaleOffset, "0", "-2.5", "-2.500000", "-2.5", "0"},
             {"Scale_value", &C::scaleValue, "1", "1.5", "1.500000", "1.5", "0"},
             {"Scale_method", &C::scaleMethod, "0", "3", "3", "3"}})
        .Check();
    using T = CTranslateProperties;
    Walk<T>({{"Translate_offset", &T::translateOffset, "0", "0.0000004", "0.000000", "0", "0"},
             {"Translate_value", &T::translateValue, "0", "1.5", "1.500000", "1.5", "0"},
             {"Translate_function", &T::translateFunction, "0", "1", "1", "1"}})
        .Check();
    using S = CSmoothProperties;
    Walk<S>({{"SmoothWaveLength", &S::waveLength, "20", "0.004", "0.00", "0", "0"}}).Check();
    using D = CSpikeDetectProperties;
    Walk<D>({{"SpikeWaveLength", &D::waveLength, "20", "12.345", "12.35", "12.350000381469727", "20"},
             {"SpikeWindowSize", &D::windowSize, "1", "2.5", "2.50", "2.5", "1"},
             {"ShowSpikeWindow", &D::showWindow, "1", "0", "0", "0"}})
        .Check();
    using M = CMedianFilterProperties;
    Walk<M>({{"MedianFilterLength", &M::filterLength, "20", "7", "7.00", "7", "11"},
             {"MedianFilterDistance", &M::filterDistance, "1", "0.25", "0.25", "0.25", "1"},
             {"MedianShowSpikeWindow", &M::showWindow, "0", "1", "1", "1"}})
        .Check();
}

TEST_F(PropertySets, UnitsOnThePagesAreCopiedAndNeverStored) {
    const CWinApp host("Host");
    CSpikeDetectProperties set;
    set.waveLengthUnit = "h";
    set.windowUnit = "m";
    CSpikeDetectProperties copy = set;
    copy.SaveToRegistry("S");
    copy.SetDefaultValues();
    copy.LoadFromRegistry("S");
    EXPECT_EQ(copy.waveLengthUnit + copy.windowUnit, "hm");
    CRegKey key;
    ASSERT_EQ(key.Open(HKEY_CURRENT_USER, host.GetProfileKey() + "\\S"), ERROR_SUCCESS);
    EXPECT_EQ(NamesOf(key).size(), 3u);
}

// Two processes store sets and records whose values are all equal, over and over.
TEST_F(PropertySets, WhatAnotherProcessStoresMeanwhileIsReadWholeOrNotAtAll) {
    constexpr const char* kRecord = "Software\\Record";
    SetRegistryFile(nullptr);
    const auto store = [&](int number) {
        const CWinApp host("Host");
        const auto color = static_cast<COLORREF>(number);
        CColorProperties set;
        set.background = set.grid = set.dots = set.axis = set.modified = set.region = color;
        set.SaveToRegistry("Colors");
        KDrawProperty record;
        record.setColor(color);
        record.setLineStyle(number);
        record.setDotSize(number);
        record.setLegend(number);
        record.setDrawStyle(number);
        record.exchange(HKEY_CURRENT_USER, kRecord, true);
    };
    pid_t writers[2];
    for (pid_t& writer : writers) {
        writer = fork();
        if (writer != 0) continue;
        Reopen();
        for (int number = 1;; ++number) store(number);
    }
    Reopen();
    store(0);
    const CWinApp host("Host");
    int sets = 0;
    int records = 0;
    COLORREF last = 0;
    for (int load = 0, changes = 0; load < 20000 && (load < 300 || changes < 30); ++load) {
        CColorProperties set;
        set.LoadFromRegistry("Colors");
        sets += set.grid != set.background || set.dots != set.grid || set.axis != set.dots ||
                set.modified != set.axis || set.region != set.modified;
        changes += std::exchange(last, set.grid) != set.grid;
        KDrawProperty record;
        record.exchange(HKEY_CURRENT_USER, kRecord, false);
        const auto number = static_cast<int>(record.getColor());
        records += number != record.getLineStyle() || number != record.getDotSize() ||
                   number != record.getLegend() || number != record.getDrawStyle();
    }
    for (const pid_t writer : writers) {
        kill(writer, SIGKILL);
        waitpid(writer, nullptr, 0);
    }
    EXPECT_EQ(sets, 0);
    EXPECT_EQ(records, 0);
}

}  // namespace
