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

// The pixels of a part that are nearly of a colour.
int Pixels(const QImage& picture, const QRect& part, const QColor& color) {
    int count = 0;
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x) {
            const QColor pixel(picture.pixel(x, y));
            count += std::abs(pixel.red() - color.red()) < 60 &&
                     std::abs(pixel.green() - color.green()) < 60 &&
                     std::abs(pixel.blue() - color.blue()) < 60;
        }
    return count;
}

const QColor kDeleted(204, 0, 51);
const QColor kRejected(136, 0, 170);
const QColor kSpike(190, 95, 0);
const QColor kPale(158, 201, 226);

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
    // Low in the left half, high in the right half; the legend lies at the top left, where nothing else is.
    EXPECT_GT(SeriesPixels(picture, {60, 200, 200, 180}), 180);
    EXPECT_EQ(SeriesPixels(picture, {60, 60, 200, 140}), 0);
    EXPECT_GT(SeriesPixels(picture, {350, 0, 150, 200}), 140);
    EXPECT_EQ(SeriesPixels(picture, {350, 200, 200, 200}), 0);
}

TEST_F(PlotTest, DrawsThePartAskedForOverTheWholeWidth) {
    const QImage picture = Picture("--size 600x400 --from 2024-03-01T13:00 --to 2024-03-01T20:00");
    // Constant there: one line in the middle.
    EXPECT_GT(SeriesPixels(picture, {80, 150, 450, 100}), 440);
    EXPECT_EQ(SeriesPixels(picture, {80, 250, 450, 150}), 0);
}

TEST_F(PlotTest, TheLegendLiesWhereTheFewestDataLie) {
    // Steps whose low part or high part leaves one corner alone free.
    const struct {
        const char* about;
        std::function<double(int)> value;
        QRect free;
    } cases[] = {
        {"top right", [](int i) { return i < 60 ? i % 2 : 0.1 * (i % 2); }, {430, 20, 160, 40}},
        {"top left", [](int i) { return i > 40 ? i % 2 : 0.1 * (i % 2); }, {50, 20, 160, 40}},
        {"bottom right", [](int i) { return i < 60 ? i % 2 : 1 - 0.1 * (i % 2); }, {430, 300, 160, 45}},
        {"bottom left", [](int i) { return i > 40 ? i % 2 : 1 - 0.1 * (i % 2); }, {50, 300, 160, 45}}};
    for (const auto& one : cases) {
        std::string text = "x,y\n";
        for (int i = 0; i < 100; ++i) text += std::to_string(i) + "," + std::to_string(one.value(i)) + "\n";
        folder.Write("step.csv", text);
        // The legend's swatch.
        EXPECT_GT(SeriesPixels(Picture("--size 600x400"), one.free), 60) << one.about;
    }
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

// Twenty-one samples of 1 or 2 with the edits that a cleaning notes: in the middle a deleted one far outside,
// left of it a rejected one, right of it a spike.
TEST_F(PlotTest, ShowsTheFlagsOfAStatusColumnAndWhatWasDeleted) {
    std::string text = "x,level [m],level_status\n";
    for (int i = 0; i <= 20; ++i) {
        const char* const flags = i == 5 ? "rejected+edited" : i == 10 ? "deleted+edited" : "";
        text += std::to_string(i) + "," +
                (i == 10 ? "9"
                 : i % 2 ? "1"
                         : "2") +
                "," + (i == 15 ? "spike" : flags) + "\n";
    }
    folder.Write("step.csv", text);
    const QImage picture = Picture("--size 600x400");
    const struct {
        const QColor& color;
        QRect place;
    } marks[] = {
        {kRejected, {150, 250, 60, 120}}, {kDeleted, {285, 10, 50, 40}}, {kSpike, {420, 250, 60, 120}}};
    for (const auto& mark : marks) {
        const int here = Pixels(picture, mark.place, mark.color);
        EXPECT_GT(here, 8);
        EXPECT_EQ(Pixels(picture, {60, 60, 80, 300}, mark.color), 0) << "where there is none";
        EXPECT_GT(Pixels(picture, picture.rect(), mark.color), here * 3 / 2) << "in the legend";
    }
    // The line to the sample that is gone, upwards out of the plot.
    EXPECT_GT(Pixels(picture, {285, 60, 50, 100}, kPale), 60);
}

TEST_F(PlotTest, LaysTheCleanedLineOverThatOfTheOriginal) {
    folder.Write("step.csv", "x,level\n0,0\n100,0\n200,1\n");
    // Begins elsewhere, and has other columns, too.
    folder.Write("before.csv", "x,depth,level\n-50,7,1\n0,7,1\n100,7,1\n200,7,1\n");
    folder.Write("depth.csv", "x,depth,other\n0,7,1\n200,7,1\n");
    const QImage picture = Picture("--size 600x400 --over before.csv");
    EXPECT_GT(Pixels(picture, {100, 20, 200, 60}, kPale), 200);
    EXPECT_GT(SeriesPixels(picture, {100, 300, 200, 60}), 180);
    ExpectRefused(folder, {"plot step.csv --over depth.csv -o x.png", 1, "no column has the name"}, 4);
    folder.Write("over.png", "x,level\n0,1\n");
    ExpectRefused(folder, {"plot step.csv --over over.png -o over.png", 2, "over.png is the input"}, 5);
    ExpectRefused(folder, {"plot step.csv --over none.csv -o x.png", 1, "cannot open none.csv"}, 5);
}

TEST_F(PlotTest, EachUnitHasAPlotUnlessAskedOtherwise) {
    folder.Write("step.csv", "x,a [m],b [hPa],c [m]\n0,0,1000,1\n1,1,1001,0\n");
    const QColor ink(60, 60, 60);
    // The axis lines below the plots: one, or one for each.
    const auto lines = [&](const std::string& options) {
        const QImage picture = Picture("--size 600x400 " + options);
        int count = 0;
        for (int y = 0; y < picture.height(); ++y) count += Pixels(picture, {100, y, 400, 1}, ink) > 350;
        return count;
    };
    EXPECT_EQ(lines(""), 2);
    EXPECT_EQ(lines("--panels series"), 3);
    EXPECT_EQ(lines("--panels all"), 1);
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

TEST_F(PlotTest, TakesSizesOfPaper) {
    const QImage picture = Picture("--size 5x2.5in --dpi 200");
    EXPECT_EQ(picture.size(), QSize(1000, 500));
    EXPECT_EQ(picture.dotsPerMeterX(), 7874);
    // Points of 1/72 inch.
    EXPECT_EQ(folder.Run("plot step.csv -o step.pdf --size 254x127mm --dpi 300").exitCode, 0);
    EXPECT_NE(folder.Read("step.pdf").find("/MediaBox [0 0 720.000000 360.000000]"), std::string::npos);
    EXPECT_EQ(folder.Run("plot step.csv -o step.svg --size 25.4x12.7cm --dpi 300").exitCode, 0);
    EXPECT_NE(folder.Read("step.svg").find("width=\"254mm\" height=\"127mm\""), std::string::npos);
}

TEST_F(PlotTest, RefusesWithOneMessageAndLeavesNothingBehind) {
    const RefusedRun cases[] = {
        {"plot step.csv -o step.gif", 2, "must end in .png, .svg or .pdf"},
        {"plot step.csv -o step.png --format svg", 2, "--format is that of standard output"},
        {"plot step.csv -o step.png --size 12", 2, "--size 12"},
        {"plot step.csv -o step.png --size 99999x99999", 2, "--size"},
        {"plot step.csv -o step.png --size 5x5mm", 2, "180x120mm"},
        {"plot step.csv -o step.png --size 300.5x200", 2, "--size"},
        {"plot step.csv -o step.png --dpi 0", 2, "--dpi 0"},
        {"plot step.csv -o step.png --gap wide", 2, "--gap wide: expected"},
        {"plot step.csv -o step.png --from noon", 2, "--from noon: expected a time"},
        {"plot step.csv -o step.png --from 2024-03-02 --to 2024-03-01", 2, "nothing between"},
        {"plot step.csv -o step.png --panels some", 2, "--panels some"},
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
