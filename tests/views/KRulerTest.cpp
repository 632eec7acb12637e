#include "views/KRuler.h"

#include <gtest/gtest.h>

#include "platform/gdi/CDC.h"

namespace {

// Ten stored x units, or a tenth of a y unit, per pixel.
void MapTo(CDC& dc) {
    dc.SetMapMode(MM_ANISOTROPIC);
    dc.SetWindowExt(1000, 10);
    dc.SetViewportExt(100, 100);
}

TEST(Ruler, BendsToTheAxisThatItLiesNearerToOnTheScreen) {
    CDC dc;
    MapTo(dc);
    const struct {
        CPoint to;
        CPoint bent;
    } cases[] = {
        {{600, 32}, {600, 30}},    // 50 right, 20 down
        {{300, 33}, {100, 33}},    // 20 right, 30 down
        {{300, 32}, {100, 32}},    // as far on both: vertical
        {{600, 30}, {100, 30}},    // level already: vertical, as a slope needs both
        {{-900, 29}, {-900, 30}},  // 100 left, 10 up
    };
    for (const auto& one : cases) {
        KRuler ruler;
        ruler.StartRuler({100, 30});
        CPoint point = one.to;
        ruler.RulerTo(&dc, point);
        EXPECT_EQ(point, one.bent) << one.to.x << "," << one.to.y;
        EXPECT_EQ(ruler.getEnd(), one.bent);
        EXPECT_EQ(ruler.EndRuler({}), !(one.bent == CPoint(100, 30)));
    }
    KRuler free(KRuler::FreeLine);
    CPoint point(600, 32);
    free.RulerTo(&dc, point);
    EXPECT_EQ(free.getEnd(), CPoint(600, 32));
}

TEST(Ruler, SaysItsLengthAndComponentsUnlessOneIsZero) {
    CDC dc;
    KRuler ruler(KRuler::FreeLine);
    ruler.setScaleX(1000.0);
    ruler.setScaleY(10.0);
    const struct {
        CPoint to;
        const char* text;
    } cases[] = {{{4000, 70}, "5.000 (3.000,4.000)"},
                 {{1000, 155}, "12.500"},
                 {{1000, 30}, "0.000"},
                 {{-2000, 30}, "3.000"},
                 {{-2000, -10}, "5.000 (-3.000,-4.000)"}};
    for (const auto& one : cases) {
        ruler.StartRuler({1000, 30});
        CPoint point = one.to;
        ruler.RulerTo(&dc, point);
        EXPECT_EQ(ruler.ToString(), one.text);
    }
}

TEST(Ruler, EndMarksStandAcrossTheLine) {
    const struct {
        CSize direction;
        CSize mark;
    } cases[] = {{{10, 0}, {0, 250}},   {{-10, 0}, {0, -250}}, {{0, 10}, {-250, 0}},   {{0, -9}, {250, 0}},
                 {{7, 7}, {-177, 177}}, {{-7, 7}, {177, 177}}, {{30, 40}, {-200, 150}}};
    for (const auto& one : cases)
        EXPECT_EQ(RulerEndMark(one.direction), one.mark) << one.direction.cx << "," << one.direction.cy;
}

}  // namespace
