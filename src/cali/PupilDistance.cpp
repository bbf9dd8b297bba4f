#include <Tavrin/PupilDistance.h>

#include "cali/CaliDraw.h"
#include "foundation/NewInstance.h"
#include "geometry/CaliGeometry.h"
#include "geometry/PixelMath.h"

namespace Tavrin {

namespace {

const figures::Palette kPupilPalette{{0xE6005C, 0xE6005C, 0xFFC000, 0xF47F4C}};

}  // namespace

// The stored pupils are cleared, so a bar asked for before any vertex is set works on
// two (0, 0) points.
PupilDistance::PupilDistance() : m_points{} {}

PupilDistance::~PupilDistance() = default;

PupilDistance* PupilDistance::NewInstance() { return newInstanceOf<PupilDistance>(); }

bool PupilDistance::SetPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    if (points == nullptr || count != 2 || !geometry::allFinite(points, 2)) {
        return false;
    }
    m_points[0] = points[0];
    m_points[1] = points[1];
    return m_pupilLine.SetPoints(m_points, 2);
}

bool PupilDistance::GetPoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    if (points == nullptr || count == nullptr) {
        return false;
    }
    unsigned int read = 0;
    if (!m_pupilLine.GetPoints(m_points, &read)) {
        return false;
    }
    for (unsigned int i = 0; i < 2; ++i) {
        points[i] = i < read ? m_points[i] : tagTAVRIN_POINT{};
    }
    *count = read;
    return true;
}

bool PupilDistance::IsNull() { return m_pupilLine.IsNull(); }

tagTAVRIN_OBJ_STATUS PupilDistance::GetObjStatus() { return m_pupilLine.GetObjStatus(); }

void PupilDistance::SetObjStatus(tagTAVRIN_OBJ_STATUS status) { m_pupilLine.SetObjStatus(status); }

void PupilDistance::Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) { m_pupilLine.Move(from, to); }

void PupilDistance::MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) { m_pupilLine.MovePoint(from, to); }

bool PupilDistance::CheckSelected(tagTAVRIN_POINT& p)
{
    Point cursor(&p);
    return m_pupilLine.CheckSelected(cursor);
}

unsigned int PupilDistance::CheckPointSelected(tagTAVRIN_POINT& p)
{
    return m_pupilLine.CheckPointSelected(p);
}

void PupilDistance::SetSelPointIndex(unsigned int index) { m_pupilLine.SetSelPointIndex(index); }

unsigned int PupilDistance::GetSelPointIndex() { return m_pupilLine.GetSelPointIndex(); }

void PupilDistance::GetPupilLine(tagTAVRIN_POINT& end, tagTAVRIN_POINT* out)
{
    geometry::lineHeadBar(end, m_points[0], m_points[1], m_wndWidth, m_wndHeight, out);
}

void PupilDistance::Draw(void* context, int width, int height, bool /*flag*/)
{
    m_wndWidth = width;
    m_wndHeight = height;
    if (m_pupilLine.IsNull()) {
        return;
    }
    kPupilPalette.applyTo(m_pupilLine);
    unsigned int count = 0;
    if (!m_pupilLine.GetPoints(m_points, &count)) {
        return;
    }
    const geometry::PupilDimension d = geometry::pupilDimension(m_points[0], m_points[1], width, height);
    const tagTAVRIN_OBJ_STATUS status = m_pupilLine.GetObjStatus();
    for (const tagTAVRIN_POINT& pupil : {d.first, d.second}) {
        tagTAVRIN_POINT bar[2] = {};
        if (geometry::lineHeadBar(pupil, m_points[0], m_points[1], width, height, bar)) {
            cali::drawPlainLine(bar[0], bar[1], status, kPupilPalette, context, width, height);
        }
    }
    if (d.hasExtension) {
        cali::drawPlainLine(d.extensionStart, d.extensionEnd, status, kPupilPalette, context, width,
                            height);
    }
    cali::drawPlainLine(d.second, d.first, status, kPupilPalette, context, width, height);
    m_pupilLine.Draw(context, width, height, true);
}

}  // namespace Tavrin
