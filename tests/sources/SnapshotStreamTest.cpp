#include "sources/SnapshotStream.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace {

std::string ReadAll(SnapshotStream& stream) {
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

// Sizes on either side of every way in which the stream gets its memory.
TEST(SnapshotStream, KeepsWhatWasWrittenWhileItGrows) {
    for (const std::size_t reserved : {std::size_t{0}, std::size_t{100}, std::size_t{17} << 20}) {
        SnapshotStream stream(reserved);
        std::string expected;
        for (const std::size_t piece :
             {std::size_t{50}, std::size_t{5000}, std::size_t{3} << 20, std::size_t{20} << 20}) {
            const std::string bytes(piece, static_cast<char>('a' + piece % 7));
            stream << bytes;
            expected += bytes;
        }
        ASSERT_TRUE(stream.good());
        stream.Reread();
        EXPECT_TRUE(ReadAll(stream) == expected) << reserved;
    }
}

TEST(SnapshotStream, AReusedStreamShowsNoOlderBytesWhateverItsSize) {
    for (const std::size_t capacity : {std::size_t{10}, std::size_t{1} << 20, std::size_t{30} << 20}) {
        SnapshotStream stream(std::size_t{80} << 20);
        stream << std::string(1000, 'x');
        stream.Rewrite(capacity);
        EXPECT_TRUE(ReadAll(stream).empty());
        stream.clear();
        stream << "abc";
        stream.EndSnapshot();
        stream << "own";
        stream.Reread();
        EXPECT_EQ(ReadAll(stream), "abcown");
        stream.clear();
        stream.SkipSnapshot();
        EXPECT_EQ(ReadAll(stream), "own");
        EXPECT_EQ(stream.SnapshotSize(), 3U);
    }
}

TEST(SnapshotStream, NoMemorySetsTheErrorStateAndTheStreamWorksAgain) {
    SnapshotStream stream(10);
    stream.Rewrite(static_cast<std::size_t>(-1));
    EXPECT_TRUE(stream.bad());
    stream.Rewrite(10);
    stream << "abc";
    stream.Reread();
    EXPECT_EQ(ReadAll(stream), "abc");
}

}  // namespace
