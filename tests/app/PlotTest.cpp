#include <gtest/gtest.h>

#include <QImage>

#include "tests/app/Files.h"

namespace app {
namespace {

// A day of readings, one an hour: 1 until noon, 3 from noon on.
std::string StepAtNoon() {
    std::string text = "time,level [m]\n";
    for (int hour = 0; hour <= 24; ++hour)
        text += "2024-03-0" + std::to_string(1 + hour / 24) + "T" + (hour % 24 < 10 ? "0" : "") +
                std::to_string(hour % 24) + ":00," + (hour < 12 ? "1.0" : "3.0") + "\n";
    return text;
}

// How many pixels a part of the picture has that show more of the first series' blue than of white paper.
int SeriesPixels(const QImage& picture, const QRect& part) {
    int count = 0;
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            count += qBlue(pixel) - qRed(pixel) > 0xB2 / 2;
        }
    return count;
}

class PlotTest : public testing::Test {
  protected:
    PlotTest() { folder.Write("step.csv", StepAtNoon()); }

    QImage Picture(const std::string& options) {
        const auto run = folder.Run("plot step.csv -o step.png " + options);
        EXPECT_EQ(run.exitCode, 0) << run.err;
        EXPECT_EQ(run.err, "");
        return QImage(QString::fromStdString(folder.Path("step.png")));
    }

    Folder folder;
};

TEST_F(PlotTest, DrawsTheSeriesWhereItsValuesAre) {
    const QImage picture = Picture("--size 600x400");
    ASSERT_EQ(picture.size(), QSize(600, 400));
    // Low in the left half, high in the right half, up to the legend's place.
    EXPECT_GT(SeriesPixels(picture, {60, 200, 200, 180}), 180);
    EXPECT_EQ(SeriesPixels(picture, {60, 0, 200, 200}), 0);
    EXPECT_GT(SeriesPixels(picture, {350, 0, 150, 200}), 140);
    EXPECT_EQ(SeriesPixels(picture, {350, 200, 200, 200}), 0);
}

TEST_F(PlotTest, DrawsThePartAskedForOverTheWholeWidth) {
    const QImage picture = Picture("--size 600x400 --from 2024-03-01T13:00 --to 2024-03-01T20:00");
    // Constant there: one line in the middle.
    EXPECT_GT(SeriesPixels(picture, {80, 150, 450, 100}), 440);
    EXPECT_EQ(SeriesPixels(picture, {80, 250, 450, 150}), 0);
}

TEST_F(PlotTest, LinesBreakWhereSamplesAreMissing) {
    std::string text = "x,y\n";
    for (int i = 0; i < 100; ++i)
        if (i < 40 || i >= 60) text += std::to_string(i) + "," + std::to_string(i % 2) + "\n";
    folder.Write("step.csv", text);
    // The middle of the plot, between samples 40 and 60.
    const QRect middle(280, 60, 60, 250);
    EXPECT_EQ(SeriesPixels(Picture("--size 600x400"), middle), 0);
    EXPECT_GT(SeriesPixels(Picture("--size 600x400 --gap 0"), middle), 20);
    EXPECT_GT(SeriesPixels(Picture("--size 600x400 --gap 30"), middle), 20);
}

TEST_F(PlotTest, WritesDrawingsAndPages) {
    EXPECT_EQ(folder.Run("plot step.csv -o step.svg").exitCode, 0);
    EXPECT_NE(folder.Read("step.svg").find("<svg"), std::string::npos);
    EXPECT_EQ(folder.Run("plot - -y level -o step.pdf < step.csv").exitCode, 0);
    EXPECT_EQ(folder.Read("step.pdf").substr(0, 5), "%PDF-");
    const auto piped = folder.Run("plot step.csv -o - --format svg --title 'Noon & after'");
    EXPECT_NE(piped.out.find("<title>Noon &amp; after</title>"), std::string::npos) << piped.err;
    EXPECT_EQ(piped.out.compare(piped.out.size() - 7, 6, "</svg>"), 0);
    EXPECT_EQ(folder.Run("plot step.csv -o - >/dev/full").exitCode, 1);
    EXPECT_EQ(folder.Count(), 3u);
}

TEST_F(PlotTest, RefusesWithOneMessageAndLeavesNothingBehind) {
    const RefusedRun cases[] = {
        {"plot step.csv -o step.gif", 2, "must end in .png, .svg or .pdf"},
        {"plot step.csv -o step.png --format svg", 2, "--format is that of standard output"},
        {"plot step.csv -o step.png --size 12", 2, "--size 12"},
        {"plot step.csv -o step.png --size 99999x99999", 2, "--size"},
        {"plot step.csv -o step.png --gap wide", 2, "--gap wide: expected"},
        {"plot step.csv -o step.png --from noon", 2, "--from noon: expected a time"},
        {"plot step.csv -o step.png --from 2024-03-02 --to 2024-03-01", 2, "nothing between"},
        {"plot step.csv -o step.png -y depth", 2, "there is no column \"depth\""},
        {"plot none.csv -o step.png", 1, "cannot open none.csv"},
        {"plot step.csv -o nowhere/step.png", 1, "cannot write nowhere/step.png"},
        {"plot step.csv -o nowhere/step.pdf", 1, "cannot write nowhere/step.pdf"},
    };
    for (const auto& one : cases) ExpectRefused(folder, one, 1);
}

TEST_F(PlotTest, LeavesNoPartOfAPictureWhereTheDiskEnds) {
    // A limit of the size of files fails as a full disk does: with an error on the way.
    for (const char* ending : {"svg", "pdf", "png"}) {
        const auto run =
            folder.Run(std::string("nothing 2>/dev/null; trap '' XFSZ; ulimit -f 1; " TAVIN_PROGRAM
                                   " plot step.csv --size 4000x3000 -o full.") +
                       ending);
        EXPECT_EQ(run.exitCode, 1) << ending;
        EXPECT_NE(run.err.find("cannot write full."), std::string::npos) << run.err;
        EXPECT_EQ(folder.Count(), 1u) << ending;
    }
}

TEST_F(PlotTest, TakesEndingsInAnyCaseAndNoOthers) {
    EXPECT_EQ(folder.Run("plot step.csv -o step.PNG").exitCode, 0);
    EXPECT_FALSE(QImage(QString::fromStdString(folder.Path("step.PNG")), "PNG").isNull());
    EXPECT_EQ(folder.Run("plot step.csv -o step.png.txt").exitCode, 2);
}

}  // namespace
}  // namespace app
