#include "support/GlTest.h"
#include "support/PolygonBuilders.h"

#include "geometry/ArrowGeometry.h"
#include "geometry/LineGeometry.h"

#include <Tavrin/Line.h>

#include <climits>
#include <limits>

namespace g = Tavrin::geometry;

TEST(LineGeometryArrowBar, RefusesSmallBuffersAndMissingViews)
{
    tagTAVRIN_POINT points[18];
    tagTAVRIN_POINT a{7, 7};
    tagTAVRIN_POINT b{7, 7};
    for (TAVRIN_ARROW_TYPE direction : {TAVRIN_ARROW_BOTH, TAVRIN_ARROW_POSITIVE, TAVRIN_ARROW_NONE}) {
        int count = g::arrowBarPointCount(direction) - 1;
        points[0] = pt(9, 9);
        g::arrowBarOutline(0.5f, direction, 1000, 500, points, count, a, b);
        EXPECT_EQ(count, g::arrowBarPointCount(direction) - 1);
        EXPECT_FLOAT_EQ(points[0].x, 9.0f);
    }
    int count = 18;
    g::arrowBarOutline(0.5f, TAVRIN_ARROW_BOTH, 0, 500, points, count, a, b);
    g::arrowBarOutline(kInf, TAVRIN_ARROW_BOTH, 1000, 500, points, count, a, b);
    g::arrowBarOutline(0.5f, TAVRIN_ARROW_BOTH, 1000, 500, nullptr, count, a, b);
    EXPECT_EQ(count, 18);
    EXPECT_FLOAT_EQ(a.x, 7.0f);
    g::arrowBarOutline(0.5f, TAVRIN_ARROW_NONE, 1000, 500, points, count, a, b);
    EXPECT_EQ(count, 4);
    EXPECT_FLOAT_EQ(a.x, 7.0f);  // the bare bar writes no marks

    // Through the line: its own direction and view size.
    Tavrin::Line line;
    line.SetWndSize(1000, 500);
    line.SetArrowDirection(TAVRIN_ARROW_NEGATIVE);
    count = 32;
    tagTAVRIN_POINT buffer[32];
    line.GetArrowPoint(0.4f, buffer, count, a, b);
    EXPECT_EQ(count, 11);
    EXPECT_POINT_NEAR(buffer[6], 0.2f, -0.047f, 1e-7);  // the tip
}

TEST(LineGeometryFrames, CoincidentOrNonFiniteSegmentsHaveNoDirection)
{
    g::LocalFrame frame{};
    float length = -1;
    EXPECT_FALSE(g::localFrameOf(pt(0.5f, 0.5f), pt(0.5f, 0.5f), frame, length));
    EXPECT_FALSE(g::localFrameOf(pt(-3e38f, 0.5f), pt(3e38f, 0.5f), frame, length));
    EXPECT_FLOAT_EQ(length, -1.0f);
    g::PixelCorner corners[8] = {};
    EXPECT_FALSE(g::blockArrowCorners(pt(0.1f, 0.1f), pt(0.9f, 0.9f), 0, 100, corners));
    // Saturated pixels never overflow: the corners stay 64-bit sums.
    ASSERT_TRUE(g::blockArrowCorners(pt(-3e38f, 0.5f), pt(3e38f, 0.5f), 1000, 1000, corners));
    EXPECT_EQ(corners[4].x, INT_MAX);
    EXPECT_GT(corners[3].y, 0);
}

TEST(LineGeometryCalibration, SegmentsFeetAndArrowEnds)
{
    tagTAVRIN_POINT out[2];
    g::segmentFromLeftEnd(pt(0.6f, 0.5f), pt(0.6f, 0.5f), 0.0, 0.0, out);  // no length
    EXPECT_TRUE(samePoints(Points(out, out + 2), {pt(0.6f, 0.5f), pt(0.6f, 0.5f)}));
    // End points whose difference overflows single precision: the segment is built in
    // double and stays between them; with an infinite line length it shrinks onto the
    // left end point.
    g::segmentFromLeftEnd(pt(3e38f, 0.5f), pt(-3e38f, 0.5f), 6e38, 3e38, out);
    EXPECT_NEAR(out[0].x, 0.0f, 1e32f);
    EXPECT_EQ(out[0].y, 0.5f);
    EXPECT_POINT_NEAR(out[1], -3e38f, 0.5f, 0.0);
    g::segmentFromLeftEnd(pt(-3e38f, 0.2f), pt(3e38f, 0.6f), 6e38, 3e38, out);  // the left end given first
    EXPECT_POINT_NEAR(out[0], -3e38f, 0.2f, 0.0);
    EXPECT_NEAR(out[1].x, 0.0f, 1e32f);
    EXPECT_NEAR(out[1].y, 0.4f, 1e-6f);
    g::segmentFromLeftEnd(pt(-3e38f, 0.5f), pt(3e38f, 0.1f), std::numeric_limits<double>::infinity(), 100.0, out);
    EXPECT_TRUE(samePoints(Points(out, out + 2), {pt(-3e38f, 0.5f), pt(-3e38f, 0.5f)}));
    // An exactly horizontal line projects onto y1 even when it is very short; a short
    // line with any rise counts as vertical.
    EXPECT_POINT_NEAR(g::footOnLine(pt(0.5f, 0.5f), pt(0.50005f, 0.5f), pt(0.7f, 0.1f)), 0.7f, 0.5f, 0.0);
    EXPECT_POINT_NEAR(g::footOnLine(pt(0.5f, 0.5f), pt(0.50005f, 0.6f), pt(0.7f, 0.1f)), 0.5f, 0.1f, 0.0);
    EXPECT_POINT_NEAR(g::footOnLine(pt(0.5f, 0.5f), pt(0.5f, 0.5f), pt(0.7f, 0.1f)), 0.5f, 0.1f, 0.0);
    // A run of 0.00015 is no longer vertical: the foot is the true perpendicular one.
    EXPECT_POINT_NEAR(g::footOnLine(pt(0.5f, 0.5f), pt(0.50015f, 0.6f), pt(0.7f, 0.1f)), 0.4994003f, 0.100301f, 1e-6);
    tagTAVRIN_POINT end = pt(9, 9);
    EXPECT_FALSE(g::directionArrowEnd(pt(0.2f, 0.5f), pt(0.6f, 0.5f), pt(0.4f, 0.5f), pt(0.4f, 0.4f), 0, 0, end));
    // A rise too steep for single precision gives no finite end.
    EXPECT_FALSE(g::directionArrowEnd(pt(0.2f, -3e38f), pt(0.6f, 3e38f), pt(0.4f, 0.0f), pt(0.4f, 0.4f), 100, 100,
                                      end));
    EXPECT_POINT_NEAR(end, 9.0f, 9.0f, 0.0);
    // A coincident line counts as vertical and takes the negative side.
    ASSERT_TRUE(g::directionArrowEnd(pt(0.5f, 0.5f), pt(0.5f, 0.5f), pt(0.5f, 0.5f), pt(0.6f, 0.5f), 100, 100, end));
    EXPECT_POINT_NEAR(end, 0.4f, 0.5f, 1e-7);
    tagTAVRIN_LINE line{};
    EXPECT_FALSE(g::calibrationLineAt(pt(0.5f, 0.5f), pt(0.2f, 0.5f), pt(0.6f, 0.5f), 100, 0, line));
    tagTAVRIN_POINT segment[2];
    EXPECT_FALSE(g::targetWidthSegment(pt(0.2f, 0.5f), pt(0.6f, 0.5f), pt(0, 0), 16, 0.1f, 100, 100, segment));
}
