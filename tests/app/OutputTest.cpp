#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/table/OutputFile.h"
#include "app/table/SafeText.h"
#include "tests/app/Files.h"

namespace app {
namespace {

bool WriteFile(const std::string& path, const std::string& text) {
    OutputFile output;
    return output.Open(path) && output.Write(text) && output.Commit();
}

struct stat About(const std::string& path) {
    struct stat about {};
    EXPECT_EQ(::stat(path.c_str(), &about), 0) << path;
    return about;
}

TEST(OutputFile, KeepsPermissionsButNoSpecialBits) {
    const Folder folder;
    const std::string path = folder.Path("out");
    for (const mode_t mode : {06755u, 02640u, 0600u}) {
        folder.Write("out", "before");
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);
        ASSERT_TRUE(WriteFile(path, "after"));
        EXPECT_EQ(About(path).st_mode & 07777, mode & 0777);
        EXPECT_EQ(folder.Read("out"), "after");
    }
}

TEST(OutputFile, KeepsTheOwner) {
    if (::getuid() != 0) GTEST_SKIP() << "only root gives files away";
    const Folder folder;
    const std::string path = folder.Path("out");
    folder.Write("out", "before");
    ASSERT_EQ(::chown(path.c_str(), 1234, 5678), 0);
    ASSERT_TRUE(WriteFile(path, "after"));
    EXPECT_EQ(About(path).st_uid, 1234u);
    EXPECT_EQ(About(path).st_gid, 5678u);
}

TEST(OutputFile, FollowsLinksThatLeadNowhereYetAndRefusesCircles) {
    const Folder folder;
    std::filesystem::create_directory(folder.Path("deep"));
    std::filesystem::create_symlink("deep/two", folder.Path("one"));
    std::filesystem::create_symlink("three", folder.Path("deep/two"));
    ASSERT_TRUE(WriteFile(folder.Path("one"), "text"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("one")));
    EXPECT_EQ(folder.Read("deep/three"), "text");

    std::filesystem::create_symlink("round", folder.Path("round"));
    OutputFile output;
    EXPECT_FALSE(output.Open(folder.Path("round")));
    EXPECT_NE(output.Error().message.find("Too many levels of symbolic links"), std::string::npos);
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("round")));
}

TEST(OutputFile, TakesNamesAsLongAsTheFileSystemDoes) {
    const Folder folder;
    const std::string longest(255, 'n');
    EXPECT_TRUE(WriteFile(folder.Path(longest), "text"));
    EXPECT_EQ(folder.Read(longest), "text");
    EXPECT_FALSE(WriteFile(folder.Path(longest + "n"), "text"));
    EXPECT_EQ(folder.Count(), 1u);
}

TEST(OutputFile, ShowsNothingBeforeItIsWhole) {
    const Folder folder;
    folder.Write("out", "before");
    {
        OutputFile output;
        ASSERT_TRUE(output.Open(folder.Path("out")) && output.Write(std::string(1 << 20, 'x')) &&
                    output.Flush());
        EXPECT_EQ(folder.Read("out"), "before");
        EXPECT_EQ(folder.Count(), 1u);  // not even under another name
    }
    EXPECT_EQ(folder.Read("out"), "before");
    EXPECT_EQ(folder.Count(), 1u);
}

// Whatever goes wrong at the end, nothing is left beside the target.
TEST(OutputFile, LeavesNothingWhenItCannotTakeItsPlace) {
    const Folder folder;
    OutputFile output;
    ASSERT_TRUE(output.Open(folder.Path("out")) && output.Write("text"));
    std::filesystem::create_directory(folder.Path("out"));
    EXPECT_FALSE(output.Commit());
    EXPECT_NE(output.Error().message.find("cannot write"), std::string::npos);
    EXPECT_EQ(folder.Count(), 1u);
}

TEST(OutputFile, CompressesWhatItsNameSays) {
    const Folder folder;
    std::string text;
    for (int i = 0; i < 100000; ++i) text += std::to_string(i) + '\n';
    for (const std::string name : {"out.gz", "OUT.GZ"}) {
        ASSERT_TRUE(WriteFile(folder.Path(name), text));
        const std::string packed = folder.Read(name);
        EXPECT_TRUE(IsGzip(packed) && packed.size() < text.size() / 2);
        const auto unpacked = Unpacked(packed, name);
        EXPECT_TRUE(unpacked && *unpacked == text);
    }
    OutputFile full;
    EXPECT_FALSE(full.Open(folder.Path("none/out.gz")));
}

TEST(Text, LeavesTerminalsAlone) {
    EXPECT_EQ(SafeText("a\tb\n"), "a\tb\n");
    EXPECT_EQ(SafeText("gr\xC3\xB6\xC3\x9F"
                       "e \xF0\x9F\x8C\x8A"),
              "gr\xC3\xB6\xC3\x9F"
              "e \xF0\x9F\x8C\x8A");
    EXPECT_EQ(SafeText("\x1B[2J\r\x7F"), "\\x1b[2J\\x0d\\x7f");
    EXPECT_EQ(SafeText("\xC2\x9B"
                       "31m"),
              "\\x9b31m");  // CSI as one character
    EXPECT_EQ(SafeText("\x9B"
                       "31m\xC3"),
              "\\x9b31m\\xc3");  // and as one byte; a cut character
    EXPECT_EQ(SafeText("\xE0\x82\x9B\xC1\x80"), "\\xe0\\x82\\x9b\\xc1\\x80");  // longer than they need be
    EXPECT_EQ(SafeJson("{\"a\":\"\x7F\xC2\x85\"}\n"), "{\"a\":\"\\u007f\\u0085\"}\n");
}

}  // namespace
}  // namespace app
