// What steps do with a selection, with empty cells and with flags.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/app/Files.h"

namespace app {
namespace {

// A spike at 2 and one at 6.
const char* const kTwoSpikes = "x,y\n0,1\n1,1\n2,9\n3,1\n4,1\n5,1\n6,9\n7,1\n8,1\n9,1\n";

TEST(Steps, MarkAndEditInTheSelectionOnly) {
    const struct {
        const char* steps;
        const char* deleted;  // x of the points, with blanks between
    } cases[] = {
        {"--median 7,3 --delete-spikes", "2 6"},
        {"--select x=4: --median 7,3 --delete-spikes", "6"},
        {"--select x=4: --median 7,3 --select all --delete-spikes", "6"},
        {"--median 7,3 --select x=:4 --delete-spikes", "2"},
        {"--median 7,3 --select x=:4 --delete-spikes --select all --delete-spikes", "2 6"},
        {"--median 7,3 --select x=7: --delete-spikes", ""},
        {"--select x=100: --median 7,3 --delete-spikes", ""},
        {"--spikes 1000,4 --select x=4: --delete-spikes", "6"},
        {"--select x=2:3 --delete --select invert --delete", "0 1 2 3 4 5 6 7 8 9"},
        {"--select x=2:3 --delete --delete", "2 3"},
        {"--delete", ""},
        // An edit of all points selects none.
        {"--translate 1 --delete", ""},
        {"--median 7,3 --select x=4: --median 7,100 --select all --delete-spikes", "2"},
    };
    const Folder folder;
    folder.Write("in.csv", kTwoSpikes);
    for (const auto& one : cases) {
        const auto run = folder.Run("clean in.csv -q -o - " + std::string(one.steps));
        ASSERT_EQ(run.exitCode, 0) << run.err;
        std::string deleted;
        std::istringstream lines(run.out);
        for (std::string line; std::getline(lines, line);)
            if (line.find("deleted") != std::string::npos)
                deleted += (deleted.empty() ? "" : " ") + line.substr(0, 1);
        EXPECT_EQ(deleted, one.deleted) << one.steps;
    }
}

// Times without a zone are of the zone asked for, both showings of an hour included.
TEST(Steps, TakeTimesAsTheZoneShowsThem) {
    const struct {
        const char* select;
        const char* levelled;  // the clock times of the rows, with blanks between
    } cases[] = {
        {"x=2024-10-27T03:00:", "03:00"},
        {"x=2024-10-27T02:00:2024-10-27T02:30", "02:00 02:30 02:00 02:30"},
        {"x=:2024-10-27T00:00Z", "01:30 02:00"},
        {"x=2024-10-27T02:30+02:00:2024-10-27T02:00+01:00", "02:30 02:00"},
    };
    const Folder folder;
    folder.Write("in.csv",
                 "t,v\n2024-10-27 01:30,1\n2024-10-27 02:00,1\n2024-10-27 02:30,1\n2024-10-27 02:00,1\n"
                 "2024-10-27 02:30,1\n2024-10-27 03:00,1\n");
    for (const auto& one : cases) {
        const auto run =
            folder.Run("clean in.csv -q --zone Europe/Berlin -o - --level 7 --select all --select " +
                       std::string(one.select) + " --level 0");
        ASSERT_EQ(run.exitCode, 0) << run.err;
        std::string levelled;
        std::istringstream lines(run.out);
        for (std::string line; std::getline(lines, line);)
            if (line.find(",0,") != std::string::npos)
                levelled += (levelled.empty() ? "" : " ") + line.substr(11, 5);
        EXPECT_EQ(levelled, one.levelled) << one.select;
    }
}

TEST(Steps, KnowWhyPointsWereRejected) {
    const Folder folder;
    folder.Write("in.csv", std::string(kTwoSpikes) + "10,\n11,1\n");
    const auto run = folder.Run(
        "clean in.csv -q -o - --median 7,3 --reject-spikes --select x=8:8 --translate 2 --select all "
        "--fill-gaps 9 "
        "--select 'reason(spike) or reason(moved)' --level 5");
    EXPECT_EQ(
        run.out,
        "x,y,y_status\n0,1,\n1,1,\n2,5,rejected+spike+moved+edited\n3,1,\n4,1,\n5,1,\n"
        "6,5,rejected+spike+moved+edited\n7,1,\n8,5,moved+edited\n9,1,\n10,1,interpolated+edited\n11,1,\n")
        << run.err;
}

TEST(Steps, SayWhyTheyDidNothing) {
    const struct {
        const char* steps;
        const char* said;
    } cases[] = {
        {"--select y=50: --level 0", "nothing is selected: nothing to do until --select all"},
        {"--select y=5: --reject --level 0", "has been deleted or rejected: nothing to do"},
        {"--delete", "nothing is selected: nothing to do"},
        {"--select missing --interpolate", "only empty cells are selected (--fill-gaps fills them)"},
        {"--median 7,3 --select x=7: --delete-spikes", "no spikes are marked in the selection"},
        {"--median 5,3", "--select \"hampel(2,3)\" tests against one"},
        {"--fill-gaps 1", "1 cell stays empty: no value on one side, or a longer gap"},
        {"--translate 0.4", "the amount was rounded to 0: the column is stored with 0 decimals (--decimals"},
    };
    const Folder folder;
    folder.Write("in.csv", std::string(kTwoSpikes) + "11,\n14,1\n");
    for (const auto& one : cases) {
        const auto run = folder.Run("clean in.csv -o out.csv " + std::string(one.steps));
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_NE(run.err.find(one.said), std::string::npos) << one.steps << "\n" << run.err;
    }
    const auto longMedian = folder.Run("clean in.csv -o out.csv --median 7,3");
    EXPECT_EQ(longMedian.err.find("hampel"), std::string::npos) << longMedian.err;
}

TEST(Steps, FailIfEmptyAsksAllColumns) {
    const Folder folder;
    folder.Write("in.csv", "x,a,b\n0,1,5\n1,1,6\n");
    const std::string options = "clean in.csv -q -y a -y b -o out.csv --fail-if-empty ";
    EXPECT_EQ(folder.Run(options + "--select y=6: --delete").exitCode, 0);
    EXPECT_EQ(folder.Run(options + "--select y=6: --delete --select y=6: --delete").exitCode, 1);
    EXPECT_EQ(folder.Read("out.csv"), "x,a,b,a_status,b_status\n0,1,5,,\n1,1,6,,deleted+edited\n");
}

TEST(Steps, BlankCellsAndTellOfRowsThatDropKeeps) {
    const Folder folder;
    folder.Write("in.csv", "x,a,b,c\n1,1,\"9\",p\n2,9,1,\"q\"\n3,9,9,r\n4,9,,s\n");
    const std::string options = "clean in.csv -y a -y b -o - --select y=9: --reject ";
    EXPECT_EQ(folder.Run(options + "-q --blank deleted,rejected").out,
              "x,a,b,c,a_status,b_status\n1,1,\"\",p,,rejected+edited\n2,,1,\"q\",rejected+edited,\n"
              "3,,,r,rejected+edited,rejected+edited\n4,,,s,rejected+edited,missing\n");
    const auto run = folder.Run(options + "--drop rejected --blank rejected --write-missing NaN");
    EXPECT_EQ(run.out,
              "x,a,b,c,a_status,b_status\n1,1,\"NaN\",p,,rejected+edited\n2,NaN,1,\"q\",rejected+edited,\n");
    EXPECT_NE(run.err.find("2 dropped, 2 kept that have a flag to drop"), std::string::npos) << run.err;
    EXPECT_NE(run.err.find("2 cells blanked"), std::string::npos) << run.err;
}

TEST(FillGaps, PutsValuesIntoEmptyCellsOnly) {
    const struct {
        const char* options;
        const char* table;
        const char* filled;
    } cases[] = {
        {"--fill-gaps 30min",
         "t,v\n2024-01-01T00:00,1.0\n2024-01-01T00:10,\n2024-01-01T00:30,4.0\n2024-01-01T00:40,\n"
         "2024-01-01T01:01,7.0\n2024-01-01T01:10,\n",
         "t,v,v_status\n2024-01-01T00:00,1.0,\n2024-01-01T00:10,2.0,interpolated+edited\n"
         "2024-01-01T00:30,4.0,\n2024-01-01T00:40,,missing\n2024-01-01T01:01,7.0,\n2024-01-01T01:10,,"
         "missing\n"},
        // Rejected points carry no line; what was filled takes part in later edits.
        {"--select x=2:2 --reject --select all --fill-gaps 3 --translate 1", "x,v\n0,0\n1,\n2,50\n3,6\n",
         "x,v,v_status\n0,1,moved+edited\n1,3,moved+interpolated+edited\n2,51,rejected+moved+edited\n"
         "3,7,moved+edited\n"},
        // Rows out of order, several cells of a gap, one that is not selected.
        {"--select x=:3 --fill-gaps 9", "x,v\n5,5\n3,\n0,0\n4,\n1,NaN\n",
         "x,v,v_status\n5,5,\n3,3,interpolated+edited\n0,0,\n4,,missing\n1,1,interpolated+edited\n"},
        // Cells at the ends, cells that hold something else, rows that are short.
        {"--fill-gaps 9", "x,v,w\n0,,a\n1,1,b\n2,oops,c\n3,3,d\n4,\n5,5,f\n",
         "x,v,w,v_status\n0,,a,missing\n1,1,b,\n2,oops,c,unreadable\n3,3,d,\n4,,,missing\n5,5,f,\n"},
    };
    const Folder folder;
    for (const auto& one : cases) {
        folder.Write("in.csv", one.table);
        const auto run = folder.Run("clean in.csv -q -y v -o - " + std::string(one.options));
        EXPECT_EQ(run.out, one.filled) << one.options << run.err;
    }
}

TEST(Qartod, WritesTheWorstFlagOfEachPoint) {
    const Folder folder;
    folder.Write("in.csv", "x,v\n0,1\n1,1\n2,9\n3,1\n4,1\n5,50\n6,1\n7,\n8,1\n9,1\n10,1\n");
    const auto run = folder.Run(
        "clean in.csv -q -o - --report r.json --flags qartod --select x=:4 --median 7,3 --select y=40:60 "
        "--delete --select all --fill-gaps 2 --select x=9: --smooth 100");
    ASSERT_EQ(run.exitCode, 0) << run.err;
    std::string flags;
    std::istringstream lines(run.out);
    for (std::string line; std::getline(lines, line);) flags += line.back();
    EXPECT_EQ(flags, "d11311418188");
    const auto status = nlohmann::json::parse(folder.Read("r.json"))["status"];
    EXPECT_EQ(status["variables"][0]["column"], "v_qartod");
    EXPECT_EQ(status["variables"][0]["flag_values"].dump(), "[1,2,3,4,8,9]");
    EXPECT_EQ(status["variables"][0]["flag_meanings"], "pass not_evaluated suspect fail estimated missing");
    EXPECT_EQ(status["tests"][0]["standard_name"], "spike_test_quality_flag");
    // Only what a test had before it passes.
    EXPECT_EQ(
        folder.Run("clean in.csv -q -o - --flags qartod --select x=2:4 --median 7,3 --select x=4:4 --delete")
            .out,
        "x,v,v_qartod\n0,1,2\n1,1,2\n2,9,3\n3,1,1\n4,1,4\n5,50,2\n6,1,2\n7,,9\n8,1,2\n9,1,2\n10,1,2\n");
}

// What failed stays as it is, what was tested stays so, and neither is a series of its own.
TEST(Qartod, GoesOnFromTheFlagsOfAnEarlierCleaning) {
    const Folder folder;
    folder.Write("in.csv", "x,v,v_qartod\n1,1,1\n2,9,4\n3,3,2\n4,,9\n5,2,3\n6,7,8\n7,8,\n");
    EXPECT_EQ(folder.Run("clean in.csv -q --translate 1 -o - --flags qartod").out,
              "x,v,v_qartod\n1,2,1\n2,9,4\n3,4,2\n4,,9\n5,3,3\n6,8,8\n7,9,2\n");
    EXPECT_EQ(folder.Run("clean in.csv -q --translate 1 -o -").out.substr(0, 66),
              "x,v,v_qartod,v_status\n1,2,1,moved+edited\n2,9,4,deleted+edited\n3,4,");
    EXPECT_NE(folder.Run("info in.csv").out.find("\"v_qartod\" holds flags of an earlier cleaning"),
              std::string::npos);
    folder.Write("in.csv", "x,v,v_qartod\n1,1,1\n2,9,5\n");
    EXPECT_NE(folder.Run("clean in.csv -q -o - --delete").out.find("2,9,5,\n"), std::string::npos);
    EXPECT_NE(folder.Run("info in.csv").out.find("\"v_qartod\" holds other text"), std::string::npos);
}

// A wave with -999.9 in three cells, 40 equal values from row 300, a step of 5 at row 600 and a spike at 800.
TEST(Info, NamesWhatStandsOutAndACommandForIt) {
    const Folder folder;
    std::string table = "x,v,calm\n";
    for (int i = 0; i < 1000; ++i) {
        double v = std::sin(i * 0.02) + (i * 7919 % 101) * 0.002 + (i >= 600 ? 5 : 0) + (i == 800 ? 4 : 0);
        if (i >= 300 && i < 340) v = 0.25;
        if (i % 400 == 7) v = -999.9;
        char row[64];
        std::snprintf(row, sizeof row, "%d,%.3f,%.3f\n", i, v, std::sin(i * 0.02) + (i * 7919 % 101) * 0.002);
        table += row;
    }
    folder.Write("in.csv", table);
    const auto info = nlohmann::json::parse(folder.Run("info in.csv --json").out);
    const auto& found = info["y"][0]["findings"];
    EXPECT_EQ(found["sentinels"].dump(), R"([{"count":3,"value":-999.9}])");
    EXPECT_EQ(found["longestFlat"]["from"], "300");
    EXPECT_EQ(found["longestFlat"]["values"], 40);
    ASSERT_EQ(found["steps"].size(), 1u) << found;
    EXPECT_EQ(found["steps"][0]["at"], "600");
    EXPECT_NEAR(found["steps"][0]["size"].get<double>(), 5, 0.6);
    EXPECT_EQ(found["spikes"]["count"], 1);
    const auto& calm = info["y"][1]["findings"];
    EXPECT_TRUE(calm["sentinels"].empty() && calm["longestFlat"].is_null() && calm["steps"].empty()) << calm;

    const auto text = folder.Run("info in.csv").out;
    const auto at = text.find(
        "tavin clean in.csv --missing -999.9 -y v --select 'hampel(3,5) and spike(1.9) or flat(39)'");
    ASSERT_NE(at, std::string::npos) << text;
    const auto run = folder.Run(text.substr(at + 6, text.find('\n', at) - at - 6));
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_NE(run.err.find("41 points selected"), std::string::npos) << run.err;
    EXPECT_NE(folder.Read("in-clean.csv").find("800,"), std::string::npos);
}

}  // namespace
}  // namespace app
