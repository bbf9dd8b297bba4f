// tavrin-sample-frame: paints the synthetic street picture that the example scenes and the
// gallery draw their figures over, as a fixed camera at a street corner would see it: a
// building with a door, windows and a cash machine on the left, a sidewalk with a few
// people, a three-lane road running away to the right with cars on it, and the sensor
// noise and vignetting of a real camera. Everything is drawn in a small 3D street model
// projected through one pinhole camera, so sizes and vanishing lines agree; the noise comes
// from a fixed-seed generator, so the picture is the same on every run and machine.
//
// Usage: tavrin-sample-frame OUT.png [WIDTHxHEIGHT]   (default 1280x720)

#include <QColor>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QRadialGradient>
#include <QString>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace {

// The street, in metres: x across the street (the building's facade is the plane
// x = kFacadeX, the road runs from kRoadLeft to kRoadRight), y up, z along the street away
// from the camera. The camera stands on the far sidewalk corner, 7 m up, turned left
// towards the building.
constexpr double kFacadeX = -7.0;
constexpr double kCurbX = -3.5;
constexpr double kRoadLeft = -3.5;
constexpr double kLaneWidth = 3.5;
constexpr double kRoadRight = kRoadLeft + 3 * kLaneWidth;
constexpr double kFarZ = 400.0;
constexpr double kRightFacadeX = kRoadRight + 9.0;

/// A point of the street model, in metres.
struct Place {
    double x;
    double y;
    double z;
};

class Camera {
public:
    Camera(int width, int height)
        : m_width(width), m_height(height), m_focal(0.62 * width), m_cx(0.5 * width), m_cy(0.30 * height)
    {
    }

    /// The picture point of the street point (x, y, z); z must be in front of the camera.
    QPointF at(double x, double y, double z) const
    {
        const double dx = x - kCameraX;
        const double dz = z - kCameraZ;
        const double right = dx * m_cos + dz * m_sin;
        const double d = std::max(depthOf(x, z), kNear);
        return QPointF(m_cx + m_focal * right / d, m_cy - m_focal * (y - kCameraHeight) / d);
    }

    /// Picture size of one metre standing at distance z along the street.
    double scaleAt(double x, double z) const
    {
        return m_focal / std::max(depthOf(x, z), kNear);
    }

    /// The picture outline of the flat face a-b-c-d, cut at a plane just in front of the
    /// camera so that faces reaching behind it still project correctly.
    QPolygonF face(const Place& a, const Place& b, const Place& c, const Place& d) const
    {
        const Place corners[4] = {a, b, c, d};
        QPolygonF outline;
        for (int i = 0; i < 4; ++i) {
            const Place& from = corners[i];
            const Place& to = corners[(i + 1) % 4];
            const double df = depthOf(from.x, from.z) - kNear;
            const double dt = depthOf(to.x, to.z) - kNear;
            if (df >= 0) {
                outline << at(from.x, from.y, from.z);
            }
            if ((df >= 0) != (dt >= 0)) {
                const double t = df / (df - dt);
                outline << at(from.x + t * (to.x - from.x), from.y + t * (to.y - from.y), from.z + t * (to.z - from.z));
            }
        }
        return outline;
    }

    int width() const { return m_width; }
    int height() const { return m_height; }

private:
    double depthOf(double x, double z) const { return -(x - kCameraX) * m_sin + (z - kCameraZ) * m_cos; }

    static constexpr double kNear = 0.5;
    static constexpr double kCameraX = 8.5;
    static constexpr double kCameraZ = -6.0;
    static constexpr double kCameraHeight = 7.0;
    const double m_sin = std::sin(0.42);
    const double m_cos = std::cos(0.42);
    int m_width;
    int m_height;
    double m_focal;
    double m_cx;
    double m_cy;
};

/// A small deterministic generator (xorshift), so the noise is identical everywhere.
class Noise {
public:
    std::uint32_t next()
    {
        m_state ^= m_state << 13;
        m_state ^= m_state >> 17;
        m_state ^= m_state << 5;
        return m_state;
    }
    /// Uniform in [-amplitude, amplitude].
    int centred(int amplitude) { return static_cast<int>(next() % static_cast<std::uint32_t>(2 * amplitude + 1)) - amplitude; }

private:
    std::uint32_t m_state = 0x9e3779b9u;
};

void paintSky(QPainter& p, const Camera& cam)
{
    QLinearGradient sky(0, 0, 0, cam.height() * 0.35);
    sky.setColorAt(0.0, QColor(150, 172, 196));
    sky.setColorAt(1.0, QColor(206, 214, 220));
    p.fillRect(QRectF(0, 0, cam.width(), cam.height()), sky);
}

void paintFarBuildings(QPainter& p, const Camera& cam)
{
    p.setPen(Qt::NoPen);
    // A row of blocks closing the street far away, facing the camera.
    const QColor ends[] = {QColor(168, 160, 150), QColor(140, 146, 156), QColor(176, 166, 148), QColor(150, 150, 160)};
    for (int i = 0; i < 4; ++i) {
        const double x = kFacadeX + i * 7.0;
        const double top = 14.0 + 6.0 * (i % 3);
        p.setBrush(ends[i]);
        p.drawPolygon(cam.face({x, 0, kFarZ}, {x + 7.0, 0, kFarZ}, {x + 7.0, top, kFarZ},
                               {x, top, kFarZ}));
    }
    // The buildings along the right-hand side, behind the far sidewalk.
    const double x = kRightFacadeX;
    double z = -20.0;
    for (int i = 0; z < kFarZ; ++i) {
        const double length = 18.0 + 7.0 * (i % 3);
        const double top = 10.0 + 4.0 * ((i * 7) % 4);
        const QColor wall = ends[i % 4].darker(108);
        p.setBrush(wall);
        p.drawPolygon(cam.face({x, 0, z}, {x, 0, z + length}, {x, top, z + length}, {x, top, z}));
        p.setBrush(wall.darker(140));
        for (double y = 2.5; y < top - 1.5; y += 3.0) {
            for (double w = z + 1.5; w < z + length - 2.0; w += 3.5) {
                p.drawPolygon(cam.face({x, y, w}, {x, y, w + 1.8}, {x, y + 1.5, w + 1.8},
                                       {x, y + 1.5, w}));
            }
        }
        z += length;
    }
}

void paintGround(QPainter& p, const Camera& cam)
{
    // Everything below the horizon starts as pavement.
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(150, 147, 140));
    p.drawPolygon(cam.face({kFacadeX, 0, -8}, {kRightFacadeX, 0, -8}, {kRightFacadeX, 0, kFarZ},
                           {kFacadeX, 0, kFarZ}));
    // Road surface with a light gradient towards the distance.
    QLinearGradient asphalt(0, cam.height(), 0, cam.height() * 0.3);
    asphalt.setColorAt(0.0, QColor(72, 74, 78));
    asphalt.setColorAt(1.0, QColor(112, 114, 118));
    p.setPen(Qt::NoPen);
    p.setBrush(asphalt);
    p.drawPolygon(cam.face({kRoadLeft, 0, -2}, {kRoadRight, 0, -2}, {kRoadRight, 0, kFarZ},
                           {kRoadLeft, 0, kFarZ}));
    // Sidewalk between the curb and the facade, with paving joints.
    p.setBrush(QColor(170, 166, 158));
    p.drawPolygon(cam.face({kFacadeX, 0, -8}, {kCurbX, 0, -8}, {kCurbX, 0, kFarZ},
                           {kFacadeX, 0, kFarZ}));
    p.setPen(QPen(QColor(132, 128, 121), 1.0));
    for (double z = -6.0; z < 120.0; z += 1.5) {
        p.drawLine(cam.at(kFacadeX, 0, z), cam.at(kCurbX, 0, z));
        if (z > 2.0) {
            p.drawLine(cam.at(kRoadRight, 0, z), cam.at(kRightFacadeX, 0, z));
        }
    }
    for (double x = kRoadRight + 1.5; x < kRightFacadeX; x += 1.5) {
        p.drawLine(cam.at(x, 0, 2.0), cam.at(x, 0, 120.0));
    }
    // Curbs.
    p.setPen(QPen(QColor(205, 202, 196), 3.0));
    p.drawLine(cam.at(kCurbX, 0, -8), cam.at(kCurbX, 0, kFarZ));
    p.drawLine(cam.at(kRoadRight, 0, -8), cam.at(kRoadRight, 0, kFarZ));
}

void paintMarkings(QPainter& p, const Camera& cam)
{
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(226, 226, 220));
    // Solid edge lines and dashed lane lines (3 m dashes, 6 m gaps).
    for (double x : {kRoadLeft + 0.3, kRoadRight - 0.3}) {
        p.drawPolygon(cam.face({x - 0.08, 0, -2}, {x + 0.08, 0, -2}, {x + 0.08, 0, kFarZ},
                               {x - 0.08, 0, kFarZ}));
    }
    for (int lane = 1; lane < 3; ++lane) {
        const double x = kRoadLeft + lane * kLaneWidth;
        for (double z = -2.0; z < 160.0; z += 9.0) {
            p.drawPolygon(cam.face({x - 0.08, 0, z}, {x + 0.08, 0, z}, {x + 0.08, 0, z + 3.0},
                                   {x - 0.08, 0, z + 3.0}));
        }
    }
    // Zebra crossing and stop line near the camera.
    for (double x = kRoadLeft + 0.6; x < kRoadRight - 0.4; x += 1.0) {
        p.drawPolygon(cam.face({x, 0, 4.0}, {x + 0.5, 0, 4.0}, {x + 0.5, 0, 8.0}, {x, 0, 8.0}));
    }
    p.drawPolygon(cam.face({kRoadLeft + 0.4, 0, 9.5}, {kRoadRight - 0.4, 0, 9.5},
                           {kRoadRight - 0.4, 0, 9.9}, {kRoadLeft + 0.4, 0, 9.9}));
}

void facadeRect(QPainter& p, const Camera& cam, double z0, double z1, double y0, double y1)
{
    p.drawPolygon(cam.face({kFacadeX, y0, z0}, {kFacadeX, y0, z1}, {kFacadeX, y1, z1},
                           {kFacadeX, y1, z0}));
}

void paintBuilding(QPainter& p, const Camera& cam)
{
    p.setPen(Qt::NoPen);
    QLinearGradient brick(cam.at(kFacadeX, 0, -8), cam.at(kFacadeX, 0, 60));
    brick.setColorAt(0.0, QColor(150, 96, 78));
    brick.setColorAt(1.0, QColor(178, 128, 104));
    p.setBrush(brick);
    facadeRect(p, cam, -8.0, 60.0, 0.0, 18.0);
    // Storey bands.
    p.setBrush(QColor(196, 184, 170));
    for (double y : {4.2, 7.6, 11.0, 14.4}) {
        facadeRect(p, cam, -8.0, 60.0, y, y + 0.35);
    }
    // Upper-floor windows: glass with a sky reflection, frames and sills.
    for (double y : {5.0, 8.4, 11.8, 15.2}) {
        for (double z = -6.0; z < 58.0; z += 3.6) {
            p.setBrush(QColor(222, 214, 200));
            facadeRect(p, cam, z - 0.12, z + 1.72, y - 0.18, y + 1.9);
            QLinearGradient glass(cam.at(kFacadeX, y + 1.8, z), cam.at(kFacadeX, y, z + 1.6));
            glass.setColorAt(0.0, QColor(120, 150, 180));
            glass.setColorAt(1.0, QColor(44, 58, 76));
            p.setBrush(glass);
            facadeRect(p, cam, z, z + 1.6, y, y + 1.8);
        }
    }
    // Shop window, door and the cash machine at street level.
    p.setBrush(QColor(60, 74, 88));
    facadeRect(p, cam, -5.0, 1.5, 0.6, 3.4);
    p.setBrush(QColor(96, 118, 138));
    facadeRect(p, cam, -4.8, -1.9, 0.8, 3.2);
    facadeRect(p, cam, -1.7, 1.3, 0.8, 3.2);
    // Door: a frame, two glass leaves, handles and a canopy.
    p.setBrush(QColor(54, 48, 44));
    facadeRect(p, cam, 3.0, 5.4, 0.0, 2.7);
    p.setBrush(QColor(84, 104, 118));
    facadeRect(p, cam, 3.12, 4.14, 0.05, 2.55);
    facadeRect(p, cam, 4.26, 5.28, 0.05, 2.55);
    p.setBrush(QColor(200, 200, 196));
    facadeRect(p, cam, 3.95, 4.05, 1.0, 1.3);
    facadeRect(p, cam, 4.35, 4.45, 1.0, 1.3);
    p.setBrush(QColor(36, 70, 60));
    p.drawPolygon(cam.face({kFacadeX, 2.9, 2.6}, {kFacadeX, 2.9, 5.8}, {kFacadeX + 1.2, 2.7, 5.8},
                           {kFacadeX + 1.2, 2.7, 2.6}));
    // Cash machine: a steel surround, a lit screen, a keypad and a card slot.
    p.setBrush(QColor(120, 124, 128));
    facadeRect(p, cam, 7.6, 9.2, 0.3, 2.4);
    p.setBrush(QColor(40, 42, 46));
    facadeRect(p, cam, 7.8, 9.0, 0.5, 2.2);
    p.setBrush(QColor(96, 170, 220));
    facadeRect(p, cam, 7.95, 8.85, 1.45, 2.0);
    p.setBrush(QColor(180, 182, 186));
    for (int row = 0; row < 3; ++row) {
        for (int col = 0; col < 3; ++col) {
            const double z = 8.1 + col * 0.2;
            const double y = 1.2 - row * 0.15;
            facadeRect(p, cam, z, z + 0.14, y, y + 0.1);
        }
    }
    p.setBrush(QColor(230, 120, 40));
    facadeRect(p, cam, 8.55, 8.8, 1.15, 1.22);
    // Shadow at the foot of the wall.
    p.setBrush(QColor(0, 0, 0, 40));
    p.drawPolygon(cam.face({kFacadeX, 0, -8}, {kFacadeX, 0, 60}, {kFacadeX + 0.6, 0, 60},
                           {kFacadeX + 0.6, 0, -8}));
}

void paintLampPost(QPainter& p, const Camera& cam, double x, double z)
{
    const QPointF foot = cam.at(x, 0, z);
    const QPointF top = cam.at(x, 6.5, z);
    const double s = cam.scaleAt(x, z);
    p.setPen(QPen(QColor(46, 50, 54), std::max(1.5, 0.16 * s)));
    p.drawLine(foot, top);
    p.drawLine(top, cam.at(x + 1.2, 6.7, z));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(230, 226, 200));
    p.drawEllipse(cam.at(x + 1.2, 6.55, z), 0.3 * s, 0.12 * s);
}

struct CarLook {
    QColor body;
    double x;      // centre across the street
    double z;      // front bumper along the street
    bool towards;  // driving towards the camera (front and plate visible)
};

void paintCar(QPainter& p, const Camera& cam, const CarLook& car)
{
    const double halfWidth = 0.9;
    const double length = 4.3;
    const double x0 = car.x - halfWidth;
    const double x1 = car.x + halfWidth;
    const double zNear = car.z;
    const double zFar = car.z + length;
    p.setPen(Qt::NoPen);
    // Shadow.
    p.setBrush(QColor(0, 0, 0, 70));
    p.drawPolygon(cam.face({x0 - 0.2, 0, zNear - 0.2}, {x1 + 0.3, 0, zNear - 0.2},
                           {x1 + 0.3, 0, zFar + 0.2}, {x0 - 0.2, 0, zFar + 0.2}));
    // Wheels on the visible (right) side.
    p.setBrush(QColor(24, 24, 26));
    const double s = cam.scaleAt(x1, zNear + 0.8);
    p.drawEllipse(cam.at(x1, 0.33, zNear + 0.8), 0.2 * s, 0.34 * s);
    p.drawEllipse(cam.at(x1, 0.33, zFar - 0.8), 0.2 * s, 0.34 * s);
    // Body: right side, front, top.
    p.setBrush(car.body.darker(125));
    p.drawPolygon(cam.face({x1, 0.3, zNear}, {x1, 0.3, zFar}, {x1, 1.0, zFar}, {x1, 1.0, zNear}));
    p.setBrush(car.body);
    p.drawPolygon(cam.face({x0, 0.3, zNear}, {x1, 0.3, zNear}, {x1, 1.0, zNear}, {x0, 1.0, zNear}));
    p.setBrush(car.body.lighter(115));
    p.drawPolygon(cam.face({x0, 1.0, zNear}, {x1, 1.0, zNear}, {x1, 1.0, zFar}, {x0, 1.0, zFar}));
    // Cabin with windows.
    const double c0 = zNear + 1.2;
    const double c1 = zFar - 0.9;
    p.setBrush(car.body.darker(110));
    p.drawPolygon(cam.face({x0 + 0.1, 1.45, c0 + 0.5}, {x1 - 0.1, 1.45, c0 + 0.5},
                           {x1 - 0.1, 1.45, c1 - 0.3}, {x0 + 0.1, 1.45, c1 - 0.3}));
    p.setBrush(QColor(40, 52, 64));
    p.drawPolygon(cam.face({x0 + 0.1, 1.0, c0}, {x1 - 0.1, 1.0, c0}, {x1 - 0.1, 1.45, c0 + 0.5},
                           {x0 + 0.1, 1.45, c0 + 0.5}));
    p.drawPolygon(cam.face({x1 - 0.1, 1.0, c0}, {x1 - 0.1, 1.0, c1}, {x1 - 0.1, 1.45, c1 - 0.3},
                           {x1 - 0.1, 1.45, c0 + 0.5}));
    // Lights and, for a car coming towards the camera, its number plate.
    const QColor lamp = car.towards ? QColor(250, 246, 220) : QColor(200, 40, 30);
    p.setBrush(lamp);
    p.drawPolygon(cam.face({x0 + 0.1, 0.7, zNear}, {x0 + 0.4, 0.7, zNear}, {x0 + 0.4, 0.85, zNear},
                           {x0 + 0.1, 0.85, zNear}));
    p.drawPolygon(cam.face({x1 - 0.4, 0.7, zNear}, {x1 - 0.1, 0.7, zNear}, {x1 - 0.1, 0.85, zNear},
                           {x1 - 0.4, 0.85, zNear}));
    p.setBrush(QColor(236, 236, 230));
    p.drawPolygon(cam.face({car.x - 0.26, 0.4, zNear}, {car.x + 0.26, 0.4, zNear},
                           {car.x + 0.26, 0.52, zNear}, {car.x - 0.26, 0.52, zNear}));
    p.setPen(QPen(QColor(30, 30, 30), 1.0));
    for (double x = car.x - 0.2; x < car.x + 0.2; x += 0.09) {
        p.drawLine(cam.at(x, 0.43, zNear), cam.at(x + 0.04, 0.49, zNear));
    }
    p.setPen(Qt::NoPen);
}

struct PersonLook {
    double x;
    double z;
    QColor coat;
    QColor trousers;
};

void paintPerson(QPainter& p, const Camera& cam, const PersonLook& who)
{
    const double s = cam.scaleAt(who.x, who.z);
    const QPointF foot = cam.at(who.x, 0, who.z);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0, 0, 0, 60));
    p.drawEllipse(foot + QPointF(0.15 * s, 0), 0.35 * s, 0.1 * s);
    // Legs, coat, arms, head.
    p.setBrush(who.trousers);
    p.drawRoundedRect(QRectF(foot.x() - 0.17 * s, foot.y() - 0.85 * s, 0.14 * s, 0.85 * s), 0.05 * s, 0.05 * s);
    p.drawRoundedRect(QRectF(foot.x() + 0.03 * s, foot.y() - 0.85 * s, 0.14 * s, 0.85 * s), 0.05 * s, 0.05 * s);
    p.setBrush(who.coat);
    p.drawRoundedRect(QRectF(foot.x() - 0.24 * s, foot.y() - 1.5 * s, 0.48 * s, 0.75 * s), 0.1 * s, 0.1 * s);
    p.setBrush(who.coat.darker(115));
    p.drawRoundedRect(QRectF(foot.x() - 0.32 * s, foot.y() - 1.45 * s, 0.1 * s, 0.6 * s), 0.05 * s, 0.05 * s);
    p.drawRoundedRect(QRectF(foot.x() + 0.22 * s, foot.y() - 1.45 * s, 0.1 * s, 0.6 * s), 0.05 * s, 0.05 * s);
    p.setBrush(QColor(214, 176, 150));
    p.drawEllipse(QPointF(foot.x(), foot.y() - 1.64 * s), 0.11 * s, 0.13 * s);
    p.setBrush(QColor(52, 40, 34));
    p.drawChord(QRectF(foot.x() - 0.12 * s, foot.y() - 1.79 * s, 0.24 * s, 0.2 * s), 0, 180 * 16);
}

/// Sensor noise, a slight vignette and a faint horizontal banding, in place.
void addCameraLook(QImage& image)
{
    Noise noise;
    const double cx = 0.5 * image.width();
    const double cy = 0.5 * image.height();
    const double reach = std::sqrt(cx * cx + cy * cy);
    for (int y = 0; y < image.height(); ++y) {
        QRgb* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        const int band = (y % 4 == 0) ? -1 : 0;
        for (int x = 0; x < image.width(); ++x) {
            const double r = std::hypot(x - cx, y - cy) / reach;
            const double vignette = 1.0 - 0.28 * r * r;
            const int grain = noise.centred(3) + band;
            auto shade = [&](int c) { return std::clamp(static_cast<int>(c * vignette) + grain, 0, 255); };
            row[x] = qRgb(shade(qRed(row[x])), shade(qGreen(row[x])), shade(qBlue(row[x])));
        }
    }
}

QImage paintStreet(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    Camera cam(width, height);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    paintSky(p, cam);
    paintGround(p, cam);
    paintFarBuildings(p, cam);
    paintMarkings(p, cam);
    paintBuilding(p, cam);
    // Far to near, so nearer things cover farther ones.
    paintLampPost(p, cam, -4.0, 40.0);
    paintCar(p, cam, CarLook{QColor(60, 90, 150), kRoadLeft + 0.5 * kLaneWidth, 34.0, false});
    paintCar(p, cam, CarLook{QColor(200, 200, 204), kRoadLeft + 2.5 * kLaneWidth, 26.0, true});
    paintPerson(p, cam, PersonLook{-5.2, 18.0, QColor(90, 110, 70), QColor(40, 40, 46)});
    paintLampPost(p, cam, -4.0, 16.0);
    paintCar(p, cam, CarLook{QColor(170, 40, 36), kRoadLeft + 1.5 * kLaneWidth, 14.0, true});
    paintPerson(p, cam, PersonLook{-6.0, 9.6, QColor(60, 70, 110), QColor(30, 30, 36)});
    paintPerson(p, cam, PersonLook{-4.6, 6.0, QColor(170, 130, 60), QColor(56, 50, 64)});
    paintPerson(p, cam, PersonLook{-5.6, 2.0, QColor(120, 50, 60), QColor(36, 36, 40)});
    paintPerson(p, cam, PersonLook{0.5, 6.5, QColor(200, 200, 190), QColor(60, 60, 80)});
    paintPerson(p, cam, PersonLook{11.0, 30.0, QColor(80, 80, 90), QColor(40, 40, 40)});
    paintPerson(p, cam, PersonLook{10.0, 9.0, QColor(46, 96, 120), QColor(34, 34, 40)});
    p.end();
    addCameraLook(image);
    return image;
}

bool parseSize(const char* text, int& width, int& height)
{
    char tail = 0;
    return std::sscanf(text, "%dx%d%c", &width, &height, &tail) == 2 && width >= 64 && height >= 36 &&
           width <= 8192 && height <= 8192;
}

}  // namespace

int main(int argc, char** argv)
{
    int width = 1280;
    int height = 720;
    if (argc < 2 || argc > 3 || (argc == 3 && !parseSize(argv[2], width, height))) {
        std::fprintf(stderr, "usage: tavrin-sample-frame OUT.png [WIDTHxHEIGHT]\n");
        return 2;
    }
    const QImage image = paintStreet(width, height);
    if (!image.save(QString::fromLocal8Bit(argv[1]), "PNG", 9)) {
        std::fprintf(stderr, "%s: cannot write the picture\n", argv[1]);
        return 1;
    }
    return 0;
}
