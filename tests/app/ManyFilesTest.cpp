#include <gtest/gtest.h>

#include <functional>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/app/Files.h"

namespace app {
namespace {

const char* const kGood = "x,y\n1,1\n2,2\n3,30\n4,4\n";

std::size_t CountLines(const std::string& text, const std::string& part) {
    std::istringstream lines(text);
    std::size_t count = 0;
    for (std::string line; std::getline(lines, line);) count += line.find(part) != std::string::npos;
    return count;
}

TEST(ManyFiles, GoesOnPastBadOnesAndTellsThemApart) {
    const Folder folder;
    folder.Write("a.csv", kGood);
    folder.Write("b.csv", "Dear Sir\n");
    folder.Write("c.csv", "x,y\n1,\n2,2\n3,3\n4,4\n");
    folder.Write("d.csv", "\n");
    folder.Write("e.csv", "x,y\n1,1\n2,-999\n3,2\n2.5,1\noops,3\n");
    const std::string command =
        "clean a.csv b.csv c.csv d.csv e.csv none.csv --out-dir out --limits :10 --translate 1 ";
    const auto run = folder.Run(command + "--alarm missing=:10% --alarm rows=1:");
    EXPECT_EQ(run.exitCode, 1);
    for (const char* line :
         {"done       a.csv: 4 rows, 1 flagged, 3 changed\nfailed     b.csv:1: ",
          "\nalarm      c.csv: 4 rows, 1 missing, 3 changed; missing of \"y\": 25.00 %, above "
          "10.00 %\nempty      d.csv:1: ",
          "\ndone       e.csv: 4 rows, 4 changed; 1 row not readable (line 6: \"oops\" in column \"x\" is "
          "not a number); "
          "1 row of 4 stands behind later ones and is sorted in; -999 stands once",
          "\nfailed     none.csv: cannot open none.csv: No such file or directory\n"})
        EXPECT_NE(run.out.find(line), std::string::npos) << line << run.out;
    EXPECT_EQ(run.err, "6 files: 2 failed, 1 empty, 1 alarm, 2 done\n");
    EXPECT_EQ(folder.Read("out/a.csv"),
              "x,y,y_status\n1,2,moved+edited\n2,3,moved+edited\n3,30,deleted+edited\n4,5,moved+edited\n");
    EXPECT_TRUE(std::filesystem::exists(folder.Path("out/c.csv")));
    EXPECT_FALSE(std::filesystem::exists(folder.Path("out/b.csv")));

    const auto json = folder.Run("clean c.csv --out-dir out --json --again --delete --alarm missing=:0.3");
    EXPECT_EQ(json.exitCode, 0);
    const auto line = nlohmann::json::parse(json.out);
    EXPECT_EQ(line["state"], "done");
    EXPECT_EQ(line["columns"][0]["missing"], 1);
    EXPECT_EQ(folder.Run("clean c.csv d.csv --out-dir out --delete --alarm missing=:10%").exitCode, 4);
    EXPECT_EQ(folder.Run("clean c.csv -o out/c.csv --delete --alarm missing=:10%").exitCode, 3);
    EXPECT_EQ(
        folder.Run("clean c.csv -o out/c.csv --delete --alarm missing=25%:25% --alarm rows=4:4").exitCode, 0);
}

TEST(ManyFiles, LeavesOutWhatWouldComeOutTheSame) {
    const Folder folder;
    folder.Write("a.csv", kGood);
    folder.Write("b.csv", kGood);
    const std::string command = "clean a.csv b.csv --out-dir out ";
    const struct {
        const char* what;
        std::function<void()> change;
        std::string options;
        std::size_t done;
    } cases[] = {
        {"first", [] {}, "--translate 1", 2},
        {"nothing", [] {}, "--translate 1 --jobs 1 --json", 0},
        {"input", [&] { folder.Write("b.csv", "x,y\n1,1\n2,2\n3,30\n4,5\n"); }, "--translate 1", 1},
        {"input written anew", [&] { folder.Write("b.csv", "x,y\n1,1\n2,2\n3,30\n4,5\n"); }, "--translate 1",
         0},
        {"steps", [] {}, "--translate 2", 2},
        {"options", [] {}, "--translate 2 --decimals 2", 2},
        {"output", [&] { folder.Write("out/a.csv", "mine"); }, "--translate 2 --decimals 2", 1},
        {"log cut off", [&] { std::filesystem::resize_file(folder.Path("out/.tavin-clean"), 40); },
         "--translate 2 --decimals 2", 2},
        {"after that", [] {}, "--translate 2 --decimals 2", 0},
        {"asked", [] {}, "--translate 2 --decimals 2 --again", 2},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.what);
        one.change();
        const auto run = folder.Run(command + one.options);
        EXPECT_EQ(run.exitCode, 0) << run.err;
        EXPECT_EQ(CountLines(run.out, "done"), one.done) << run.out;
        EXPECT_EQ(CountLines(run.out, "unchanged"), 2 - one.done) << run.out;
    }
    // The bounds are held against what is unchanged as well.
    const auto alarm = folder.Run(command + "--translate 2 --decimals 2 --alarm rows=5:");
    EXPECT_EQ(alarm.exitCode, 3);
    EXPECT_EQ(CountLines(alarm.out, "rows: 4, below 5"), 2u);
}

TEST(ManyFiles, RefusesBeforeAnythingStarts) {
    const Folder folder;
    std::filesystem::create_directory(folder.Path("sub"));
    folder.Write("a.csv", kGood);
    folder.Write("sub/a.csv", kGood);
    folder.Write("bad.csv", "file,delimiter\n*.csv,dot\n");
    folder.Write("headless.csv", "a.csv,1:2\n");
    const RefusedRun cases[] = {
        {"clean a.csv sub/a.csv --out-dir out --delete", 2, "would both be written to out/a.csv"},
        {"clean a.csv --out-dir . --delete", 2, "the output ./a.csv is an input"},
        {"clean a.csv sub/a.csv -o out.csv --delete", 2, "--out-dir DIR"},
        {"clean a.csv - --out-dir out --delete", 2, "standard input has no name"},
        {"clean a.csv --out-dir out", 2, "no step to apply"},
        {"clean a.csv --out-dir out --delete --alarm mising=:1", 2, "did you mean missing?"},
        {"clean a.csv --out-dir out --delete --alarm missing=5", 2, "as in missing=:5%"},
        {"clean a.csv --out-dir out --delete --jobs two", 2, "--jobs two: expected a whole number"},
        {"clean a.csv --out-dir out --limits 5", 2, "--limits 5: expected MIN:MAX"},
        {"clean --stations bad.csv --out-dir out --delete", 2, "bad.csv:2: --delimiter dot: expected comma"},
        {"clean --stations headless.csv --out-dir out --delete", 2, "headless.csv:1: no heading \"file\""},
    };
    for (const auto& one : cases) ExpectRefused(folder, one, 4);
    EXPECT_EQ(folder.Run("clean a.csv --out-dir out --dry-run --delete").out, "would clean a.csv: 4 rows\n");
    EXPECT_EQ(folder.Count(), 4u);
}

TEST(ManyFiles, KeepsCompressedFilesCompressed) {
    const Folder folder;
    folder.Write("a.csv", kGood);
    ASSERT_EQ(folder.Run("--version && gzip -k a.csv").exitCode, 0);
    ASSERT_EQ(folder.Run("clean a.csv a.csv.gz --out-dir out --translate 1").exitCode, 0);
    const auto cleaned = folder.Read("out/a.csv");
    EXPECT_EQ(folder.Run("--version >/dev/null; zcat out/a.csv.gz").out, cleaned);
    // More of it, added to the compressed output.
    folder.Write("b.csv", std::string(kGood) + "5,5\n");
    EXPECT_EQ(folder.Run("clean b.csv -q -o out/a.csv.gz --update --translate 1; zcat out/a.csv.gz").out,
              cleaned + "5,6,moved+edited\n");
}

TEST(ManyFiles, CleansStations) {
    const Folder folder;
    std::filesystem::create_directory(folder.Path("data"));
    folder.Write("data/north1.csv", "x;level;temp\n1;1,5;7\n2;97;8\n");
    folder.Write("data/north2.csv", "x;level;temp\n1;1,5;70\n2;9;8\n");
    folder.Write("data/south.csv", "x,y\n1,1\n2,-9\n3,3\n");
    folder.Write("data/stations.csv",
                 "station,file,columns,limits,missing,out-dir,steps\n"
                 "North,north?.csv,level;temp,0:50,,,\n"
                 "South,south.csv,,,-9;-8,../other,\"--select 'x=2:' --translate 1\"\n"
                 "West,west*.csv,,,,,\n");
    const auto run = folder.Run("clean --stations data/stations.csv --out-dir out --translate 1 --jobs 2");
    EXPECT_EQ(run.out,
              "done       North: data/north1.csv: 2 rows, 1 flagged, 3 changed\n"
              "done       North: data/north2.csv: 2 rows, 1 flagged, 3 changed\n"
              "done       South: data/south.csv: 3 rows, 1 missing, 2 changed\n"
              "failed     West: data/west*.csv: no file matches data/west*.csv\n");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(folder.Read("out/north1.csv"),
              "x;level;temp;level_status;temp_status\n1;2,5;8;moved+edited;moved+edited\n"
              "2;97;9;deleted+edited;moved+edited\n");
    EXPECT_EQ(folder.Read("other/south.csv"),
              "x,y,y_status\n1,2,moved+edited\n2,-9,missing\n3,5,moved+edited\n");
}

std::ptrdiff_t CountFiles(const std::string& folder) {
    return std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator());
}

// 200 files, the run killed on the way, then run again; and a run one of whose processes is killed.
TEST(ManyFiles, GoesOnAfterKills) {
    const Folder folder;
    for (int i = 0; i < 200; ++i) folder.Write("in" + std::to_string(1000 + i) + ".csv", kGood);
    folder.Write("killed.sh",
                 "exec 3< <(exec \"$1\" clean in*.csv --out-dir out --translate 1 --jobs 2 2>/dev/null)\n"
                 "run=$!\nfor i in {1..20}; do read -r line <&3; done\nkill -9 $run\n"
                 // The processes of the run let go of the folder when they have ended.
                 "flock out true\n");
    ASSERT_EQ(folder.Run("--version; bash killed.sh " TAVIN_PROGRAM).exitCode, 0);
    const auto again = folder.Run("clean in*.csv --out-dir out --translate 1 --jobs 2");
    EXPECT_EQ(again.exitCode, 0) << again.err;
    EXPECT_GE(CountLines(again.out, "unchanged"), 20u);
    EXPECT_EQ(CountLines(again.out, "rows"), 200u);
    std::size_t whole = 0;
    for (const auto& file : std::filesystem::directory_iterator(folder.Path("out")))
        whole += ReadWhole(file.path().string()).ends_with("4,5,moved+edited\n");
    EXPECT_EQ(whole, 200u);
    // The outputs and the log: no temporary is left.
    EXPECT_EQ(CountFiles(folder.Path("out")), 201);

    folder.Write("one.sh",
                 "mkfifo pipe.csv\n\"$1\" clean in1000.csv pipe.csv in1001.csv --out-dir out2 --delete "
                 "--jobs 1 & run=$!\n"
                 "exec 4>pipe.csv\nkill -9 $(cat /proc/$run/task/$run/children)\nwait $run\n");
    const auto one = folder.Run("--version >/dev/null; bash one.sh " TAVIN_PROGRAM);
    EXPECT_EQ(one.exitCode, 1);
    EXPECT_EQ(CountLines(one.out, "done"), 2u) << one.out;
    EXPECT_EQ(CountLines(one.out, "failed     pipe.csv: the process was ended by a signal: Killed"), 1u)
        << one.out;
}

TEST(ManyFiles, InfoGivesEachALine) {
    const Folder folder;
    folder.Write("a.csv", "t,y\n2024-01-01,1\n2024-01-02,\n2024-01-05,3\n");
    folder.Write("b.csv", "Dear Sir\n");
    folder.Write("c.csv", kGood);
    const auto run = folder.Run("info a.csv b.csv c.csv");
    EXPECT_EQ(run.out,
              "a.csv: 3 rows, 1 value column, 2024-01-01T00:00:00 to 2024-01-05T00:00:00, 1 missing value\n"
              "c.csv: 4 rows, 1 value column, 1 to 4\n");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.err.find("tavin: b.csv:1: not a table"), std::string::npos);
    folder.Write("d.csv", "x,y\n");
    EXPECT_EQ(folder.Run("info a.csv d.csv").exitCode, 4);
    const auto json = folder.Run("info c.csv a.csv --json --jobs 1").out;
    EXPECT_EQ(nlohmann::json::parse(json.substr(0, json.find('\n')))["file"], "c.csv");
    EXPECT_EQ(CountLines(json, "\"table\""), 2u);
}

// What was published stays, in its place, whatever the input holds now; what is new is added.
TEST(Update, KeepsWhatWasPublished) {
    const struct {
        const char* what;
        const char* published;  // the last of its three rows
        const char* rows;
        const char* options;
        const char* result;  // behind the first two rows, which are 1,1 and 2,2
        const char* differences;
    } cases[] = {
        {"the same", "3,9,rejected+edited\n", "1,1\n2,2\n3,9\n", "", "3,9,rejected+edited\n", ""},
        {"grown", "3,8,\n", "1,1\n2,2\n3,9\n4,4\n", "", "3,8,\n4,4,\n",
         "line 4: 3,8,\n      now: 3,9,rejected"},
        {"revised", "3,8,\n", "1,1\n2,2\n3,9\n4,4\n", "--revise", "3,9,rejected+edited\n4,4,\n",
         "were revised:\n"},
        {"older rows lost", "3,8,\n", "3,8\n4,9\n", "", "3,8,\n4,9,rejected+edited\n", ""},
        {"a row came late", "3,8", "1,1\n2,2\n2.5,1\n3,8\n", "", "2.5,1,\n3,8\n", "line 4: 3,8\n"},
        {"nothing in common", "3,8,\n", "7,1\n8,1\n", "", "3,8,\n7,1,\n8,1,\n",
         "; none of these is in the input"},
        {"a second row at an x", "3,8,\n", "1,1\n2,2\n2,5\n3,8\n", "", "2,5,\n3,8,\n", ""},
    };
    const Folder folder;
    for (const auto& one : cases) {
        SCOPED_TRACE(one.what);
        folder.Write("in.csv", "x,y\n" + std::string(one.rows));
        folder.Write("out.csv", "x,y,y_status\n1,1,\n2,2,\n" + std::string(one.published));
        const auto run =
            folder.Run("clean in.csv -o out.csv --update --select y=9: --reject " + std::string(one.options));
        ASSERT_EQ(run.exitCode, 0) << run.err;
        EXPECT_EQ(folder.Read("out.csv"), "x,y,y_status\n1,1,\n2,2,\n" + std::string(one.result));
        EXPECT_NE(run.err.find(one.differences), std::string::npos) << run.err;
        EXPECT_EQ(run.err.find("differently") != std::string::npos,
                  one.differences[0] == 'l' || one.differences[0] == 'w')
            << run.err;
    }
    folder.Write("out.csv", "x,z,z_status\n1,1,\n");
    const auto refused = folder.Run("clean in.csv -o out.csv --update --delete");
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_NE(refused.err.find("cannot update out.csv: its headings"), std::string::npos) << refused.err;
    EXPECT_EQ(folder.Read("out.csv"), "x,z,z_status\n1,1,\n");
}

}  // namespace
}  // namespace app
