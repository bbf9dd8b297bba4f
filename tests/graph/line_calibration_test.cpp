#include "support/GlTest.h"

#include <Tavrin/Line.h>

#include <vector>

using Tavrin::Line;
using Tavrin::Point;

namespace {

// A selected people-counting line with line calibration, in a 1000 x 1000 view unless
// drawn otherwise.
Line caliLine(tagTAVRIN_POINT a, tagTAVRIN_POINT b, tagTAVRIN_POINT c0, tagTAVRIN_POINT c1)
{
    tagTAVRIN_POINT points[2] = {a, b};
    Line line(points, 2);
    tagTAVRIN_POINT cali[2] = {c0, c1};
    line.SetPDCCaliPoints(cali, 2);
    line.SetVcaPDCLineOrRect(true);
    line.SetVcaPDCLineCali(true);
    line.SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    line.SetShowPoint(false);
    line.SetWndSize(1000, 1000);
    return line;
}

void expectSegment(const rec::Batch& batch, tagTAVRIN_POINT a, tagTAVRIN_POINT b)
{
    EXPECT_EQ(batch.mode, static_cast<GLenum>(GL_LINES));
    ASSERT_EQ(batch.vertices.size(), 2u);
    EXPECT_POINT_NEAR(batch.at(0), a.x, a.y, 1e-6);
    EXPECT_POINT_NEAR(batch.at(1), b.x, b.y, 1e-6);
}

void expectCali(Line& line, tagTAVRIN_POINT a, tagTAVRIN_POINT b)
{
    tagTAVRIN_POINT out[2] = {};
    unsigned int count = 0;
    ASSERT_TRUE(line.GetPDCCaliPoints(out, &count));
    EXPECT_POINT_NEAR(out[0], a.x, a.y, 1e-6);
    EXPECT_POINT_NEAR(out[1], b.x, b.y, 1e-6);
}

const tagTAVRIN_POINT kP1 = pt(0.2f, 0.5f);
const tagTAVRIN_POINT kP2 = pt(0.6f, 0.5f);

}  // namespace

class LineCalibrationDraw : public GlTest {};

TEST_F(LineCalibrationDraw, CalibrationLineShoulderTargetWidthsArrowAndMarker)
{
    Line line = caliLine(kP1, kP2, pt(0.3f, 0.5f), pt(0.4f, 0.5f));
    line.SetVcaPDCCaliShoulderLine(true);
    float widths[16] = {0.1f};
    widths[8] = 0.2f;
    line.SetTargetWidthLine(widths);
    line.SetSelCaliPointIndex(2);
    line.Draw(nullptr, 1000, 1000, true);

    const auto& b = recorded().batches;
    ASSERT_EQ(b.size(), 8u);
    EXPECT_FLOAT_EQ(b[0].lineWidth, 4.0f);  // the line itself
    // The 100-pixel segment slides to the left end; the calibration line stands 0.18 either
    // side of its right point.
    expectSegment(b[1], pt(0.3f, 0.32f), pt(0.3f, 0.68f));
    EXPECT_EQ(b[1].color, rec::rgba(0x2EFA33));
    EXPECT_FLOAT_EQ(b[1].lineWidth, 4.0f);
    expectSegment(b[2], pt(0.2f, 0.5f), pt(0.3f, 0.5f));  // shoulder line
    // The arrow points are still (0, 0), above the line: lines 0..7 go below, 8..15 above.
    expectSegment(b[3], pt(0.2f, 0.52f), pt(0.3f, 0.52f));
    expectSegment(b[4], pt(0.2f, 0.48f), pt(0.4f, 0.48f));
    EXPECT_EQ(b[3].color, rec::rgba(0x00F0F0));
    EXPECT_FLOAT_EQ(b[4].lineWidth, 2.0f);
    EXPECT_EQ(b[5].mode, static_cast<GLenum>(GL_LINE_LOOP));  // direction arrow
    // The right calibration point, selected: halo in 0x43B71C, dot in 0x2EFA33.
    EXPECT_EQ(b[6].color, rec::rgba(0x43B71C));
    EXPECT_FLOAT_EQ(b[6].pointSize, 16.0f);
    EXPECT_POINT_NEAR(b[7].at(0), 0.3f, 0.5f, 1e-6);
    EXPECT_EQ(b[7].color, rec::rgba(0x2EFA33));
    EXPECT_GL_STATE_CLEAN();
    expectCali(line, pt(0.2f, 0.5f), pt(0.3f, 0.5f));

    // Next frame the arrow points below: the target-width lines change sides.
    rec::gl().reset();
    line.Draw(nullptr, 1000, 1000, true);
    expectSegment(recorded().batches.at(3), pt(0.2f, 0.48f), pt(0.3f, 0.48f));
}

TEST_F(LineCalibrationDraw, VerticalLineGetsHorizontalCalibrationAndOffsets)
{
    Line line = caliLine(pt(0.5f, 0.2f), pt(0.5f, 0.6f), pt(0, 0), pt(0, 0));
    float widths[16] = {0.1f};
    line.SetTargetWidthLine(widths);
    line.Draw(nullptr, 1000, 500, true);
    const auto lines = recorded().batchesOf(GL_LINES);
    ASSERT_EQ(lines.size(), 3u);
    // A zero segment at (0, 0) is laid at p1; half-length 0.18 * H / W.
    expectSegment(lines[1], pt(0.59f, 0.2f), pt(0.41f, 0.2f));
    expectSegment(lines[2], pt(0.52f, 0.2f), pt(0.52f, 0.3f));
    expectCali(line, pt(0.5f, 0.2f), pt(0.5f, 0.2f));
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(LineCalibrationDraw, OnlyInStatusOneAndWithTheFlags)
{
    Line line = caliLine(kP1, kP2, pt(0.3f, 0.5f), pt(0.4f, 0.5f));
    line.SetObjStatus(TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    line.Draw(nullptr, 1000, 1000, true);
    EXPECT_EQ(recorded().batches.size(), 1u);
    rec::gl().reset();
    line.SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    line.SetVcaPDCLineCali(false);
    line.Draw(nullptr, 1000, 1000, true);
    EXPECT_EQ(recorded().batches.size(), 2u);  // the line and the direction arrow
    expectCali(line, pt(0.3f, 0.5f), pt(0.4f, 0.5f));
}

TEST(LineCalibrationPoints, GetCaliPointsLaysTheSegmentOnTheLine)
{
    Line line = caliLine(kP2, kP1, pt(0, 0), pt(0, 0));  // p1 on the right
    tagTAVRIN_POINT longer[2] = {pt(0.1f, 0.1f), pt(0.9f, 0.1f)};
    tagTAVRIN_POINT out[2] = {};
    line.GetCaliPoints(longer, out);
    EXPECT_POINT_NEAR(out[0], 0.2f, 0.5f, 0.0);
    EXPECT_POINT_NEAR(out[1], 0.6f, 0.5f, 0.0);
    tagTAVRIN_POINT zero[2] = {pt(0, 0), pt(0, 0)};
    line.GetCaliPoints(zero, out);
    EXPECT_POINT_NEAR(out[0], 0.6f, 0.5f, 0.0);
    EXPECT_POINT_NEAR(out[1], 0.6f, 0.5f, 0.0);
    tagTAVRIN_POINT shorter[2] = {pt(0.5f, 0.1f), pt(0.5f, 0.25f)};  // 150 px
    line.GetCaliPoints(shorter, out);
    EXPECT_POINT_NEAR(out[0], 0.35f, 0.5f, 1e-6);  // p1 + 0.625 * (p2 - p1)
    EXPECT_POINT_NEAR(out[1], 0.2f, 0.5f, 1e-6);   // the left end
    line.SetWndSize(0, 1000);
    out[0] = pt(9, 9);
    line.GetCaliPoints(shorter, out);
    line.GetCaliPoints(nullptr, out);
    EXPECT_POINT_NEAR(out[0], 9.0f, 9.0f, 0.0);

    Line coincident = caliLine(kP1, kP1, pt(0, 0), pt(0, 0));
    tagTAVRIN_POINT nonZero[2] = {pt(0.5f, 0.1f), pt(0.5f, 0.1f)};
    coincident.GetCaliPoints(nonZero, out);
    EXPECT_POINT_NEAR(out[1], 0.2f, 0.5f, 0.0);
}

TEST(LineCalibrationPoints, CheckCaliPointSelectedNamesTheRightPoint)
{
    Line line = caliLine(kP1, kP2, pt(0.3f, 0.5f), pt(0.4f, 0.5f));
    tagTAVRIN_POINT onCaliLine = pt(0.3005f, 0.4005f);
    EXPECT_EQ(line.CheckCaliPointSelected(onCaliLine), 0u);  // no calibration line yet
    rec::gl().reset();
    line.Draw(nullptr, 1000, 1000, true);
    EXPECT_EQ(line.CheckCaliPointSelected(onCaliLine), 2u);
    tagTAVRIN_POINT away = pt(0.35f, 0.4005f);
    EXPECT_EQ(line.CheckCaliPointSelected(away), 0u);
    line.SetVcaPDCLineCali(false);
    EXPECT_EQ(line.CheckCaliPointSelected(onCaliLine), 0u);

    // c0 right of c1 names 1; equal x names 2 only when p2 is right of p1.
    line.SetVcaPDCLineCali(true);
    tagTAVRIN_POINT swapped[2] = {pt(0.3f, 0.5f), pt(0.2f, 0.5f)};
    line.SetPDCCaliPoints(swapped, 2);
    EXPECT_EQ(line.CheckCaliPointSelected(onCaliLine), 1u);
    tagTAVRIN_POINT same[2] = {pt(0.3f, 0.5f), pt(0.3f, 0.5f)};
    line.SetPDCCaliPoints(same, 2);
    EXPECT_EQ(line.CheckCaliPointSelected(onCaliLine), 2u);
    tagTAVRIN_POINT reversed[2] = {kP2, kP1};
    line.SetPoints(reversed, 2);
    EXPECT_EQ(line.CheckCaliPointSelected(onCaliLine), 1u);
}

TEST(LineCalibrationPoints, DraggingTheRightPointAlongTheLine)
{
    // Binary fractions, so that lengths compare exactly.
    const tagTAVRIN_POINT a = pt(0.25f, 0.5f);
    const tagTAVRIN_POINT b = pt(0.75f, 0.5f);
    Line line = caliLine(a, b, a, pt(0.375f, 0.5f));
    tagTAVRIN_POINT from = pt(0.375f, 0.25f);
    tagTAVRIN_POINT to = pt(0.5f, 0.125f);  // projected: +0.125 along the line
    EXPECT_FALSE(line.MoveCaliPoints(from, to));  // no point selected
    line.SetSelCaliPointIndex(2);
    EXPECT_TRUE(line.MoveCaliPoints(from, to));
    expectCali(line, a, pt(0.5f, 0.5f));

    tagTAVRIN_POINT out = pt(1.5f, 0.5f);
    EXPECT_FALSE(line.MoveCaliPoints(from, out));
    tagTAVRIN_POINT nan = pt(kNaN, 0.5f);
    EXPECT_FALSE(line.MoveCaliPoints(from, nan));
    expectCali(line, a, pt(0.5f, 0.5f));

    // Past the anchored point: collapses onto it.
    tagTAVRIN_POINT start = pt(0.5f, 0.5f);
    tagTAVRIN_POINT farLeft = pt(0.125f, 0.5f);
    EXPECT_TRUE(line.MoveCaliPoints(start, farLeft));
    expectCali(line, a, a);

    // Exactly as long as the line: reset to the line, and false.
    tagTAVRIN_POINT low = pt(0.25f, 0.875f);
    tagTAVRIN_POINT high = pt(0.75f, 0.125f);
    EXPECT_FALSE(line.MoveCaliPoints(low, high));
    expectCali(line, a, b);
}

TEST(LineCalibrationPoints, DraggingTheFirstPointChecksTheLineStart)
{
    // c0 is the right point here; it may pass c1 when c1 sits on x1.
    Line line = caliLine(kP1, kP2, pt(0.35f, 0.5f), pt(0.2f, 0.5f));
    line.SetSelCaliPointIndex(1);
    tagTAVRIN_POINT from = pt(0.35f, 0.5f);
    tagTAVRIN_POINT to = pt(0.1f, 0.5f);
    EXPECT_TRUE(line.MoveCaliPoints(from, to));
    expectCali(line, pt(0.1f, 0.5f), pt(0.2f, 0.5f));

    Line off = caliLine(kP1, kP2, pt(0.35f, 0.5f), pt(0.25f, 0.5f));
    off.SetSelCaliPointIndex(1);
    EXPECT_TRUE(off.MoveCaliPoints(from, to));
    expectCali(off, pt(0.25f, 0.5f), pt(0.25f, 0.5f));

    // A vertical line projects onto (x1, y); an oblique one perpendicularly.
    Line vertical = caliLine(pt(0.5f, 0.2f), pt(0.5f, 0.6f), pt(0.5f, 0.2f), pt(0.5f, 0.3f));
    vertical.SetSelCaliPointIndex(2);
    tagTAVRIN_POINT down = pt(0.9f, 0.4f);
    tagTAVRIN_POINT up = pt(0.1f, 0.3f);
    // The ordering goes by x alone, so on a vertical line the dragged point always
    // collapses onto the anchored one; kept as is.
    EXPECT_TRUE(vertical.MoveCaliPoints(up, down));
    expectCali(vertical, pt(0.5f, 0.2f), pt(0.5f, 0.2f));
    Line oblique = caliLine(pt(0.2f, 0.2f), pt(0.6f, 0.6f), pt(0.2f, 0.2f), pt(0.3f, 0.3f));
    oblique.SetSelCaliPointIndex(2);
    tagTAVRIN_POINT onLine = pt(0.4f, 0.4f);
    tagTAVRIN_POINT across = pt(0.6f, 0.4f);  // its foot is (0.5, 0.5)
    EXPECT_TRUE(oblique.MoveCaliPoints(onLine, across));
    expectCali(oblique, pt(0.2f, 0.2f), pt(0.4f, 0.4f));
}
