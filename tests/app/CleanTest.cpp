#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/app/Files.h"

namespace app {
namespace {

// Ten points on a line with one spike at 50.
const char* const kSeries =
    "x,y,note\n0,1.0,a\n10,2.0,b\n20,3.0,c\n30,4.0,d\n40,5.0,e\n50,96.0,f\n60,7.0,g\n70,8.0,h\n80,9.0,i\n90,"
    "10.0,j\n";

TEST(Clean, DoesItsStepsInTheOrderGiven) {
    const struct {
        const char* steps;
        std::string column;  // y of all points, blanks between
    } cases[] = {
        {"--translate 1 --scale offset,2", "4.0 6.0 8.0 10.0 12.0 194.0 16.0 18.0 20.0 22.0"},
        {"--scale offset,2 --translate 1", "3.0 5.0 7.0 9.0 11.0 193.0 15.0 17.0 19.0 21.0"},
        {"--scale offset,2,10 ", "-8.0 -6.0 -4.0 -2.0 0.0 182.0 4.0 6.0 8.0 10.0"},
        {"--scale ramp,9", "1.0 3.0 5.0 7.0 9.0 101.0 13.0 15.0 17.0 19.0"},
        {"--scale drift,90", "1.0 2.2 3.6 5.2 7.0 144.0 11.2 13.6 16.2 19.0"},
        {"--scale custom,50,2", "0.5 2.0 3.5 5.0 6.5 143.0 9.5 11.0 12.5 14.0"},
        {"--select x=20:40 --level -1.5", "1.0 2.0 -1.5 -1.5 -1.5 96.0 7.0 8.0 9.0 10.0"},
        {"--select y=:3 --translate 0.5 --select invert --translate -0.5",
         "1.5 2.5 3.5 3.5 4.5 95.5 6.5 7.5 8.5 9.5"},
        {"--median 5,3 --select spikes --interpolate", "1.0 2.0 3.0 4.0 5.0 6.0 7.0 8.0 9.0 10.0"},
        {"--spikes 60,30 --delete-spikes --smooth 1000", "1.0 2.0 3.0 4.0 5.0 96.0 7.0 8.0 9.0 10.0"},
        {"--select y=50: --delete --select all --translate 1", "2.0 3.0 4.0 5.0 6.0 96.0 8.0 9.0 10.0 11.0"},
        // A selection that is empty, or used up, edits nothing.
        {"--select y=500: --level 0", "1.0 2.0 3.0 4.0 5.0 96.0 7.0 8.0 9.0 10.0"},
        {"--median 11,200 --select spikes --translate -5", "1.0 2.0 3.0 4.0 5.0 96.0 7.0 8.0 9.0 10.0"},
        {"--select y=50: --delete --translate 1", "1.0 2.0 3.0 4.0 5.0 96.0 7.0 8.0 9.0 10.0"},
        {"--select y=50: --reject --select none --translate 1", "2.0 3.0 4.0 5.0 6.0 97.0 8.0 9.0 10.0 11.0"},
        {"--select 'spike(60) grow(1) and not y=50:' --level 0", "1.0 2.0 3.0 4.0 0.0 96.0 0.0 8.0 9.0 10.0"},
    };
    const Folder folder;
    folder.Write("in.csv", kSeries);
    for (const auto& one : cases) {
        SCOPED_TRACE(one.steps);
        const auto run = folder.Run("clean in.csv -q -y y -o - " + std::string(one.steps));
        ASSERT_EQ(run.exitCode, 0) << run.err;
        EXPECT_EQ(run.err, "");
        std::istringstream lines(run.out);
        std::string column;
        std::string line;
        std::getline(lines, line);
        EXPECT_EQ(line, "x,y,note,y_status");
        while (std::getline(lines, line)) {
            const auto from = line.find(',') + 1;
            column += (column.empty() ? "" : " ") + line.substr(from, line.find(',', from) - from);
        }
        EXPECT_EQ(column, one.column);
    }
}

TEST(Clean, LeavesWhatWasNotEditedByteForByte) {
    const struct {
        const char* about;
        const char* input;
        const char* arguments;
        const char* output;
    } cases[] = {
        {"marks, quotes, blanks, line breaks, rows that cannot be read",
         "\xEF\xBB\xBF# odd  file\r\n\"t\" ; \"v [m]\";rest\r\n;m;\r\n 1 ;  1,50 ;\"a;\"\"b\"\"\"\r\n\r\n"
         "2;\"2,5\"\r\nbad;1;x\r\n3;NaN;x\r\n4;oops;\r\n5;7;last",
         "-y v --select x=2:2 --translate 0.25",
         "\xEF\xBB\xBF# odd  file\r\n\"t\" ; \"v [m]\";rest;v_status\r\n;m;;\r\n"
         " 1 ;  1,50 ;\"a;\"\"b\"\"\";\r\n\r\n"
         "2;\"2,75\";;moved+edited\r\nbad;1;x\r\n3;NaN;x;missing\r\n4;oops;;unreadable\r\n5;7;last;"},
        {"rows out of order are sorted for the steps and stay in their places",
         "t,v\n2024-01-01T00:03Z,4\n2024-01-01T00:00Z,1\n2024-01-01T00:02Z,9\n2024-01-01T00:01Z,2\n",
         "--select x=2024-01-01T00:02Z:2024-01-01T00:02:30Z --interpolate",
         "t,v,v_status\n2024-01-01T00:03Z,4,\n2024-01-01T00:00Z,1,\n"
         "2024-01-01T00:02Z,3,interpolated+edited\n2024-01-01T00:01Z,2,\n"},
        {"rows whose every value is flagged are dropped", "x,a,b\n1,1,1\n2,9,1\n3,9,9\n4,9,\n5,,\n",
         "-y a -y b --select y=9: --reject --drop rejected",
         "x,a,b,a_status,b_status\n1,1,1,,\n2,9,1,rejected+edited,\n5,,,missing,missing\n"},
        // What was deleted or rejected takes no part; no second status columns come.
        {"an earlier cleaning",
         "x,a,a_status,b,b_status,c,c_status\n1,1,deleted+edited,1,,1,good\n2,2,,2,moved+edited,1,bad\n"
         "3,,missing,3,spike,1\n4,4\n5,5,rejected+edited,5,,1,good\n",
         "-y a -y b --translate 1",
         "x,a,a_status,b,b_status,c,c_status\n1,1,deleted+edited,2,moved+edited,1,good\n"
         "2,3,moved+edited,3,moved+edited,1,bad\n3,,missing,4,spike+moved+edited,1\n4,4\n"
         "5,6,rejected+moved+edited,6,moved+edited,1,good\n"},
        {"a delimiter at the end of each row", "t,v\n1,2,\n2,3,\n", "--translate 1",
         "t,v,,v_status\n1,3,,moved+edited\n2,4,,moved+edited\n"},
        {"drift counts from zero, however the values are stored", "x,y\n0,100000.00001\n1,100000.00002\n",
         "--decimals 3 --scale drift,100",
         "x,y,y_status\n0,100000.00001,moved+edited\n1,200000.0000,moved+edited\n"},
        {"a column of the right name that holds other things", "x,c,c_status\n1,1,good\n2,2,bad\n",
         "--translate 1", "x,c,c_status,c_status\n1,2,good,moved+edited\n2,3,bad,moved+edited\n"},
    };
    const Folder folder;
    for (const auto& one : cases) {
        SCOPED_TRACE(one.about);
        folder.Write("in.csv", one.input);
        const auto run = folder.Run("clean in.csv -q -o - " + std::string(one.arguments));
        EXPECT_EQ(run.exitCode, 0) << run.err;
        EXPECT_EQ(run.out, one.output);
    }
}

TEST(Clean, ReportsNamesResultsAndTheInputsHash) {
    const Folder folder;
    folder.Write("in.csv", "t,level [m]\n2024-01-01,1.0\n2024-01-02,2.0\n");
    const auto run = folder.Run(
        "clean in.csv -o out.csv --report r.json --delete --translate 0.5 --smooth 6h --delete-spikes");
    ASSERT_EQ(run.exitCode, 0) << run.err;
    const auto report = nlohmann::json::parse(folder.Read("r.json"));
    // printf 't,level [m]\n2024-01-01,1.0\n2024-01-02,2.0\n' | sha256sum
    EXPECT_EQ(report["input"]["sha256"], "ba8500ca0ad0ce92b7f146f866e118a6f3a1e727223cae589b6c504f1438f7ad");
    const auto& steps = report["y"][0]["steps"];
    EXPECT_EQ(steps[0]["note"], "nothing is selected: nothing to do");
    EXPECT_EQ(steps[1]["command"], "Translate points");
    EXPECT_EQ(steps[1]["result"], "Points translated (0.000 s, 0.500 m)");
    EXPECT_EQ(steps[2]["note"], "fewer than 4 points to fit: nothing to do");
    EXPECT_EQ(steps[3]["points"], 0);
    EXPECT_EQ(report["y"][0]["changedValues"], 2);
}

TEST(Clean, RefusesWithoutLeavingFiles) {
    const RefusedRun cases[] = {
        {"clean letter.txt -o out.csv --delete", 1, "letter.txt:1: not a table"},
        {"clean none.csv -o out.csv --delete", 1, "cannot open none.csv: No such file"},
        {"clean wide.csv -o out.csv --delete", 4, "wide.csv:1: there are headings and no rows"},
        {"clean empty.csv -o out.csv --delete", 4, "the file is empty"},
        {"clean in.csv -y y -o no/such/out.csv --delete", 1, "cannot write no/such/out.csv"},
        {"clean in.csv -y y -o out.csv --delete --report no/such/r.json", 1, "cannot write no/such/r.json"},
        {"clean in.csv -y y -o - --delete >/dev/full", 1, "cannot write standard output: No space left"},
        {"clean in.csv -y y -o - --delete >&-", 1, "cannot write standard output"},
        {"clean in.csv -y y -o out.csv --scale offset,1e12", 1, "beyond what can be stored"},
        {"clean in.csv -y note -o out.csv --delete", 1, "column \"note\" holds no numbers"},
        {"clean in.csv -y z -o out.csv --delete", 2, "there is no column \"z\""},
        {"clean in.csv -y y -o out.csv", 2, "no step to apply"},
        {"clean in.csv -y y -o out.csv --median 5", 2, "--median 5: expected LENGTH,DISTANCE"},
        {"clean in.csv -y y -o out.csv --smooth -5", 2, "--smooth -5: expected"},
        {"clean in.csv -y y -o out.csv --smooth 6h", 2, "needs an x axis of times"},
        {"clean in.csv -y y -o out.csv --select x=2024-01-01:", 2, "holds numbers, not times"},
        {"clean in.csv -y y -o out.csv --select y=a:b", 2, "--select y=a:b at character 3: expected FROM:TO"},
        {"clean in.csv -y y -o out.csv --select 'y=1: or rnage(0,1)'", 2,
         "at character 9: there is no rule \"rnage\"; did you mean range?"},
        {"clean in.csv -y y -o out.csv --select 'flat(3h)'", 2, "needs an x axis of times"},
        {"clean in.csv -y y -o out.csv --select y=500: --delete --fail-if-empty", 1,
         "selects nothing in any column"},
        {"clean in.csv -y y -o out.csv --fill-gaps 0", 2, "a LENGTH above 0"},
        {"clean in.csv -y y -o out.csv --delete --drop everything", 2, "--drop everything: expected"},
        {"clean in.csv -y y -o in.csv --delete", 2, "the output in.csv is the input"},
        {"clean in.csv -y y -o ./in.csv --delete", 2, "is the input"},
        {"clean - -y y -o in.csv --delete <in.csv", 2, "the output in.csv is the input"},
        {"clean wide-span.csv -o out.csv --level 0", 1,
         "wide-span.csv:3: \"9000\": column \"y\" has values from -0.5241231 to 9000, for which there is "
         "room for 5 decimals, not for the 7 of "
         "the "
         "file; --decimals 5 edits it so all the same"},
        {"clean wide-span.csv -o out.csv --level 0 --decimals 6", 1, "not for the 7 of the file"},
        {"clean escape.csv -y nay -o out.csv --delete", 2,
         "column \"nay\"; the columns are \"x\", \"\\x9b[31m\""},
        {"clean in.csv -y y -o out.csv --delete --report in.csv", 2, "would overwrite the input"},
        {"clean in.csv -y y -o out.csv --delete --report out.csv", 2, "are the same"},
        {"clean in.csv -y y --delete", 2, "--output is required"},
        {"clean in.csv -o out.csv --frobnicate", 2, "--frobnicate"},
        {"clean in.csv -o out.csv --delet", 2, "Did you mean --delete?"},
        {"clean in.csv -o out.csv --delete --delimiter cmoma", 2, "blanks or bar; did you mean comma?"},
        {"clean in.csv -o out.csv --delete --decimals 10", 2, "--decimals 10: expected 0, 1"},
        {"claen in.csv", 2, "there is no command or file \"claen\"; did you mean clean?"},
        {"$(printf 'x%.0s' $(seq 300))", 2, "there is no command or file \"xxx"},
    };
    const Folder folder;
    folder.Write("in.csv", kSeries);
    folder.Write("letter.txt", "Dear Sir,\nno numbers here.\n");
    folder.Write("wide.csv", std::string("\xFF\xFE"
                                         "a\0,\0b\0",
                                         8));
    folder.Write("empty.csv", "\n \n");
    folder.Write("wide-span.csv", "x,y\n1,-0.5241231\n2,9000\n");
    folder.Write("escape.csv", "x,\xC2\x9B[31m\n1,2\n3,4\n");
    for (const auto& one : cases) {
        ExpectRefused(folder, one, 6);
        EXPECT_EQ(folder.Read("in.csv"), kSeries) << one.arguments;
    }
}

TEST(Clean, ReplacesTheInputByForceAndFollowsLinks) {
    const Folder folder;
    folder.Write("in.csv", "x,y\n1,1\n2,2\n");
    std::filesystem::create_symlink("in.csv", folder.Path("link.csv"));
    const auto run = folder.Run("clean in.csv -o link.csv --force --translate 1");
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(folder.Read("in.csv"), "x,y,y_status\n1,2,moved+edited\n2,3,moved+edited\n");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link.csv")));
    EXPECT_EQ(folder.Count(), 2u);
}

TEST(Clean, ReadsStandardInput) {
    const Folder folder;
    folder.Write("in.csv", "1 2\n3 4\n");
    EXPECT_EQ(folder.Run("clean - -q -o - --select x=3: --level 7 <in.csv").out, "1 2 -\n3 7 moved+edited\n");
    EXPECT_EQ(folder.Run("--version").out.substr(0, 6), "tavin ");
    for (const char* help : {"--help", "info --help", "clean --help"}) {
        const auto run = folder.Run(help);
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_NE(run.out.find("Examples:"), std::string::npos) << help;
    }
}

TEST(Clean, KeepsDistancesThatAreWholeCounts) {
    // 0.29 * 100 is a little less than 29 in doubles: a difference of exactly 0.29 is no spike.
    const Folder folder;
    std::string text = "x,y\n";
    std::string expected = "x,y,y_status\n";
    for (int x = 0; x < 20; ++x) {
        const std::string row = std::to_string(x) + (x == 5 ? ",1.29" : x == 12 ? ",1.30" : ",1.00");
        text += row + "\n";
        if (x != 12) expected += row + ",\n";
    }
    folder.Write("in.csv", text);
    EXPECT_EQ(folder.Run("clean in.csv -q -o - --median 5,0.29 --delete-spikes --drop deleted").out,
              expected);
}

TEST(Clean, CleansRealSeries) {
    const std::string data = std::string(TAVIN_SOURCE_DIR) + "/../shared/data/";
    if (!std::filesystem::exists(data)) GTEST_SKIP() << "no real series in " << data;
    const Folder folder;
    const std::string input = data + "machine_temperature.csv";
    const auto run =
        folder.Run("clean " + input +
                   " -q -o out.csv --decimals 7 --select x=2013-12-16T17:30:2013-12-16T17:40 --level 50");
    ASSERT_EQ(run.exitCode, 0) << run.err;
    std::istringstream before(ReadWhole(input));
    std::istringstream after(folder.Read("out.csv"));
    std::string a;
    std::string b;
    int edited = 0;
    std::getline(before, a);
    std::getline(after, b);
    while (std::getline(before, a)) {
        std::getline(after, b);
        if (b == a + ",") continue;
        ++edited;
        EXPECT_EQ(b, a.substr(0, a.find(',')) + ",50.0000000,moved+edited");
    }
    EXPECT_EQ(edited, 3);
    EXPECT_FALSE(std::getline(after, b));
}

TEST(Info, DescribesATable) {
    const Folder folder;
    folder.Write(
        "in.csv",
        "time;level "
        "[m]\n2024-01-01T00:00;1,5\n2024-01-01T00:10;1,25\n2024-01-01T00:10;2\nx;1\n2024-01-01T00:40;\n"
        "2024-01-01T00:50;0,123456789012\n2024-01-01T01:00;99\n");
    const auto run = folder.Run("info in.csv --json");
    ASSERT_EQ(run.exitCode, 0) << run.err;
    const auto info = nlohmann::json::parse(run.out);
    EXPECT_EQ(info["table"]["delimiter"], "semicolon");
    EXPECT_EQ(info["table"]["decimalSign"], ",");
    EXPECT_EQ(info["table"]["faults"][0]["line"], 5);
    EXPECT_EQ(info["x"]["from"], "2024-01-01T00:00:00");
    EXPECT_EQ(info["x"]["step"], 600.0);
    EXPECT_EQ(info["x"]["duplicates"], 1);
    EXPECT_EQ(info["x"]["gaps"], 1);
    EXPECT_EQ(info["x"]["stored"]["exact"], true);
    EXPECT_EQ(info["y"][0]["unit"], "m");
    EXPECT_EQ(info["y"][0]["missing"], 1);
    EXPECT_EQ(info["y"][0]["stored"]["inexactValues"], 1);
    const auto text = folder.Run("info in.csv").out;
    for (const char* part :
         {"6 rows, 2 columns, separated by semicolon, decimal comma, header", "line 5: \"x\"",
          "gap of 30 min after 2024-01-01T00:10:00", "1 of 5 values rounded to 7 decimals"})
        EXPECT_NE(text.find(part), std::string::npos) << part << "\n" << text;
}

}  // namespace
}  // namespace app
