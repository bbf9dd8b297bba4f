// Transcripts: every kind of figure, in each of its modes, taken through the same script
// a host follows — set the vertices, draw in each look and at a zero view size, hit-test
// a grid of cursors and the boundaries around each vertex and edge, drag whole and by
// each vertex, read everything back — written as text and compared line by line with the
// committed transcript in tests/golden/. A change in any emitted call, colour, width,
// vertex, hit result or read-back shows as a diff at the line where it happens.
//
// After a deliberate change of behaviour, TAVRIN_UPDATE_GOLDEN=1 rewrites the files; the
// diff is then the review of what changed.

#include "support/GlTest.h"
#include "support/ListCheck.h"

#include <Tavrin/Tavrin.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <sstream>
#include <type_traits>

using namespace Tavrin;

namespace {

std::string fmt(float v)
{
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.6g", v);
    return buf;
}

std::string str(const tagTAVRIN_POINT& p) { return "(" + fmt(p.x) + "," + fmt(p.y) + ")"; }

// FNV-1a over the text of a long vertex run: any changed vertex changes the line.
std::string digest(const std::string& text)
{
    std::uint32_t h = 2166136261u;
    for (unsigned char c : text) {
        h = (h ^ c) * 16777619u;
    }
    char buf[16];
    std::snprintf(buf, sizeof buf, "%08x", h);
    return buf;
}

class Transcript {
public:
    template <class... Parts>
    void say(const Parts&... parts)
    {
        (m_out << ... << parts);
        m_out << '\n';
    }
    std::string text() const { return m_out.str(); }

    /// The recorded calls, each batch folded onto one line (long ones as a digest).
    void recorded()
    {
        const rec::Recorder& r = rec::gl();
        std::string batch;
        std::size_t vertices = 0;
        for (const std::string& call : r.calls) {
            if (call.rfind("glVertex2f(", 0) == 0) {
                batch += call.substr(10) + " ";
                ++vertices;
            } else if (call == "glEnd()") {
                say("  ", vertices <= 12 ? batch : std::to_string(vertices) + " vertices #" + digest(batch));
                batch.clear();
                vertices = 0;
            } else {
                say(" ", call);
            }
        }
        for (const rec::RasterText& text : r.texts) {
            std::string rows;
            for (const rec::Bitmap& glyph : text.glyphs()) {
                for (const std::string& row : glyph.rows) {
                    rows += row + "/";
                }
            }
            say("  text at ", str(text.position), " glyphs #", digest(rows));
        }
        if (!r.stateIsClean()) {
            say("  state left: ", r.stateReport());
        }
    }

private:
    std::ostringstream m_out;
};

tagTAVRIN_POINT at(float x, float y) { return tagTAVRIN_POINT{x, y}; }

// GetPoints into a buffer of sentinels: the vertices reported, and how many entries past
// them it cleared.
template <class T>
void readBack(Transcript& t, T& f, const char* after)
{
    tagTAVRIN_POINT out[20];
    std::fill(out, out + 20, tagTAVRIN_POINT{7.0f, 7.0f});
    unsigned int count = 0;
    const bool ok = f.GetPoints(out, &count);
    std::string line = std::string(after) + ": " + (ok ? "" : "GetPoints refused ");
    unsigned int cleared = 0;
    for (unsigned int i = 0; i < 20; ++i) {
        if (i < count) {
            line += str(out[i]) + " ";
        } else {
            cleared += out[i].x != 7.0f;
        }
    }
    t.say(line, "cleared=", cleared, " sel=", f.GetSelPointIndex(), " null=", f.IsNull());
}

template <class T>
std::vector<tagTAVRIN_POINT> vertices(T& f)
{
    tagTAVRIN_POINT out[20] = {};
    unsigned int count = 0;
    f.GetPoints(out, &count);
    return std::vector<tagTAVRIN_POINT>(out, out + std::min(count, 20u));
}

// CheckSelected of a figure (a picture point) or of a primitive (a Point).
template <class F>
bool selects(F& f, tagTAVRIN_POINT p)
{
    if constexpr (std::is_base_of_v<VcaObject, F>) {
        return f.CheckSelected(p);
    } else {
        Point cursor(&p);
        return f.CheckSelected(cursor);
    }
}

// After the transcript's draw, the same draw into a draw list must make no OpenGL call
// and hold exactly what one more OpenGL draw then draws. (Compared with the draw after it,
// not the one before: some figures settle their look on their first draw.)
template <class F>
void draw(Transcript& t, F& f, int w, int h)
{
    rec::gl().reset();
    f.Draw(nullptr, w, h, true);
    t.say("draw ", w, "x", h, " status ", f.GetObjStatus());
    t.recorded();
    rec::gl().reset();
    DrawList list;
    {
        DrawListScope scope(list);
        f.Draw(nullptr, w, h, true);
    }
    EXPECT_TRUE(rec::gl().calls.empty()) << "OpenGL called inside a draw-list scope";
    f.Draw(nullptr, w, h, true);
    listcheck::expectSameAsGl(rec::gl(), list, w, h, "draw " + std::to_string(w) + "x" + std::to_string(h));
}

// CheckSelected over a 24 x 24 grid of cell centres: '#' hit, '.' miss; the digit of
// CheckPointSelected where it names a vertex.
template <class F>
void hitGrid(Transcript& t, F& f)
{
    t.say("hits:");
    for (int row = 0; row < 24; ++row) {
        std::string line = "  ";
        for (int col = 0; col < 24; ++col) {
            tagTAVRIN_POINT p = at((col + 0.5f) / 24.0f, (row + 0.5f) / 24.0f);
            const unsigned int vertex = f.CheckPointSelected(p);
            const bool hit = selects(f, p);
            line += vertex != 0 ? static_cast<char>('0' + vertex % 10) : (hit ? '#' : '.');
        }
        t.say(line);
    }
}

// The vertex test's box edge (0.02 either side) and the edge test's pixel margins.
template <class F>
void boundaryProbes(Transcript& t, F& f, const std::vector<tagTAVRIN_POINT>& v, int w, int h)
{
    static const float kVertexOffsets[] = {0.0f, 0.0199f, 0.02f, 0.0201f, -0.0199f, -0.0201f};
    std::string line = "vertex probes:";
    for (const tagTAVRIN_POINT& p : v) {
        for (float d : kVertexOffsets) {
            tagTAVRIN_POINT px = at(p.x + d, p.y);
            tagTAVRIN_POINT py = at(p.x, p.y + d);
            line += " " + std::to_string(f.CheckPointSelected(px)) + std::to_string(f.CheckPointSelected(py));
        }
    }
    t.say(line);
    static const float kPixelOffsets[] = {0.0f, 0.5f, 1.5f, 4.0f, 7.5f, 8.5f, 12.0f};
    line = "edge probes:";
    for (std::size_t i = 0; i + 1 < v.size() + 1 && v.size() > 1; ++i) {
        const tagTAVRIN_POINT& a = v[i];
        const tagTAVRIN_POINT& b = v[(i + 1) % v.size()];
        const float dx = (b.x - a.x) * w;
        const float dy = (b.y - a.y) * h;
        const float len = std::sqrt(dx * dx + dy * dy);
        if (len == 0.0f) {
            continue;
        }
        for (float off : kPixelOffsets) {
            for (float along : {0.25f, 0.5f, 1.02f}) {
                tagTAVRIN_POINT p = at(a.x + (b.x - a.x) * along - dy / len * off / w,
                                       a.y + (b.y - a.y) * along + dx / len * off / h);
                line += selects(f, p) ? '#' : '.';
            }
        }
        line += ' ';
    }
    t.say(line);
}

template <class T>
void drags(Transcript& t, T& f)
{
    struct Drag {
        tagTAVRIN_POINT from, to;
        const char* what;
    };
    const float nan = std::nanf("");
    const Drag whole[] = {{at(0.5f, 0.5f), at(0.513f, 0.479f), "move (+0.013,-0.021)"},
                          {at(0.5f, 0.5f), at(0.45f, 0.56f), "move (-0.05,+0.06)"},
                          {at(0.5f, 0.5f), at(-0.6f, 0.5f), "move out left"},
                          {at(0.5f, 0.5f), at(0.5f, 1.7f), "move out down"},
                          {at(0.5f, 0.5f), at(1.3f, 0.5f), "move out right"},
                          {at(0.5f, 0.5f), at(0.5f, 0.78f), "move down 0.28"},
                          {at(0.5f, 0.5f), at(0.78f, 0.5f), "move right 0.28"},
                          {at(0.5f, 0.5f), at(0.5f, 0.22f), "move up 0.28"},
                          {at(0.5f, 0.5f), at(0.22f, 0.5f), "move left 0.28"},
                          {at(0.5f, 0.5f), at(nan, 0.5f), "move to NaN"},
                          {at(0.5f, 0.5f), at(3e38f, 0.5f), "move by 3e38"}};
    for (Drag d : whole) {
        f.Move(d.from, d.to);
        readBack(t, f, d.what);
    }
    const std::vector<tagTAVRIN_POINT> v = vertices(f);
    for (unsigned int i = 1; i <= v.size() + 1; ++i) {
        f.SetSelPointIndex(i);
        tagTAVRIN_POINT from = i <= v.size() ? v[i - 1] : at(0.5f, 0.5f);
        const tagTAVRIN_POINT targets[] = {at(from.x + 0.017f, from.y - 0.011f), at(from.x - 0.9f, from.y),
                                           at(from.x, from.y + 0.9f), at(from.x, from.y + 0.35f), at(from.x, nan)};
        std::string line = "drag vertex " + std::to_string(i) + ":";
        for (tagTAVRIN_POINT to : targets) {
            tagTAVRIN_POINT start = from;
            f.MovePoint(start, to);
            line += " ->";
            for (const tagTAVRIN_POINT& p : vertices(f)) {
                line += " " + str(p);
            }
        }
        t.say(line);
    }
    f.SetSelPointIndex(0);
}

void labelBoxes(Transcript& t, VcaObject& f)
{
    std::string line = "label boxes:";
    for (tagTAVRIN_POINT anchor : {at(0.5f, 0.5f), at(0.9f, 0.5f), at(0.5f, 0.9f), at(0.95f, 0.95f)}) {
        tagTAVRIN_VCA_RECT r{};
        f.GetDrawLabelRect(anchor, r);
        line += " [" + fmt(r.x) + "," + fmt(r.y) + "," + fmt(r.width) + "," + fmt(r.height) + "]";
    }
    t.say(line);
}

// The label as GetLabelText gives it to buffers of 20 and 4 bytes ('_' for a zero byte).
void labelText(Transcript& t, VcaObject& f)
{
    std::string line = "label:";
    for (unsigned int size : {20u, 4u}) {
        char buffer[20];
        std::fill(buffer, buffer + 20, '?');
        line += std::string(" ") + (f.GetLabelText(buffer, size) ? "" : "refused ");
        for (char c : buffer) {
            line += c == '\0' ? '_' : c;
        }
    }
    t.say(line, f.GetLabelText(nullptr, 4) || f.GetLabelText(line.data(), 0) ? " null accepted" : "",
          f.SetLabelText(line.data(), 0) ? " empty label accepted" : "");
}

void calibrationCalls(Transcript& t, VcaObject& f)
{
    tagTAVRIN_POINT probe[] = {at(0.3f, 0.3f), at(0.5f, 0.5f), at(0.7f, 0.4f)};
    std::string line = "cali hits:";
    for (tagTAVRIN_POINT& p : probe) {
        line += " " + std::to_string(f.CheckCaliPointSelected(p));
    }
    tagTAVRIN_POINT from = at(0.3f, 0.3f);
    tagTAVRIN_POINT to = at(0.33f, 0.28f);
    line += std::string(" move=") + (f.MoveCaliPoints(from, to) ? "true" : "false");
    tagTAVRIN_POINT cali[2] = {};
    unsigned int count = 0;
    line += std::string(" get=") + (f.GetPDCCaliPoint(cali, &count) ? "true" : "false");
    line += " " + std::to_string(count) + " " + str(cali[0]) + " " + str(cali[1]);
    t.say(line);
}

// SetPoints with what it must refuse, and GetPoints with null buffers; what it keeps.
template <class T>
void refusals(Transcript& t, T& f)
{
    tagTAVRIN_POINT many[21];
    for (int i = 0; i < 21; ++i) {
        many[i] = at(0.3f + 0.01f * i, 0.4f + 0.005f * (i % 3));
    }
    tagTAVRIN_POINT withNaN[3] = {at(0.3f, 0.3f), at(std::nanf(""), 0.4f), at(0.4f, 0.5f)};
    tagTAVRIN_POINT out[20] = {};
    unsigned int count = 0;
    t.say("refusals: null ", f.SetPoints(nullptr, 2), f.SetPoints(nullptr, 1), " 21 ", f.SetPoints(many, 21),
          " 11 ", f.SetPoints(many, 11),
          " NaN ", f.SetPoints(withNaN, 3), " get ", f.GetPoints(nullptr, &count), f.GetPoints(out, nullptr));
    readBack(t, f, "after refusals");
    tagTAVRIN_POINT zeros[3] = {};
    t.say("zeros ", f.SetPoints(zeros, 3));
    readBack(t, f, "zeros");
    t.say("ten ", f.SetPoints(many, 10));
    readBack(t, f, "ten");
    const bool emptied = f.SetPoints(many, 0);
    readBack(t, f, emptied ? "emptied" : "empty refused");
    draw(t, f, 640, 480);
}

/// What every figure and primitive goes through in a 640 x 480 view: draws in each look
/// and without a view size, hit tests, drags and refusals.
template <class T>
void exerciseShape(Transcript& t, T& f, void (*extra)(Transcript&, T&) = nullptr)
{
    const int w = 640;
    const int h = 480;
    f.SetWndSize(w, h);
    readBack(t, f, "set");
    t.say("closed ", f.GetClosed());
    for (tagTAVRIN_OBJ_STATUS s :
         {TAVRIN_OBJ_STATUS_NORMAL, TAVRIN_OBJ_STATUS_SELECTED, TAVRIN_OBJ_STATUS_HIGHLIGHTED}) {
        f.SetObjStatus(s);
        draw(t, f, w, h);
    }
    draw(t, f, 0, 0);
    draw(t, f, w, h);
    hitGrid(t, f);
    boundaryProbes(t, f, vertices(f), w, h);
    if (extra != nullptr) {
        extra(t, f);
    }
    drags(t, f);
    f.SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    draw(t, f, w, h);
    refusals(t, f);
}

/// The whole script for one configured analytics object.
template <class T>
void exercise(Transcript& t, T& f)
{
    exerciseShape<T>(t, f, [](Transcript& tr, T& o) {
        labelBoxes(tr, o);
        labelText(tr, o);
        calibrationCalls(tr, o);
    });
    tagTAVRIN_POINT cali[2] = {at(0.4f, 0.4f), at(0.5f, 0.45f)};
    t.say("cali set: null ", f.SetPDCCaliPoint(nullptr, 2), " two ", f.SetPDCCaliPoint(cali, 2));
}

template <class T>
Owned<T> make(std::initializer_list<tagTAVRIN_POINT> points)
{
    Owned<T> f(T::NewInstance());
    std::vector<tagTAVRIN_POINT> v(points);
    f->SetPoints(v.data(), static_cast<unsigned int>(v.size()));
    return f;
}

const std::initializer_list<tagTAVRIN_POINT> kConcave = {at(0.2f, 0.2f), at(0.6f, 0.25f), at(0.4f, 0.4f),
                                                         at(0.65f, 0.7f), at(0.25f, 0.6f)};
const std::initializer_list<tagTAVRIN_POINT> kBowTie = {at(0.2f, 0.2f), at(0.6f, 0.6f), at(0.6f, 0.2f),
                                                        at(0.2f, 0.6f)};
const std::initializer_list<tagTAVRIN_POINT> kSteepLine = {at(0.3f, 0.2f), at(0.55f, 0.7f)};
const std::initializer_list<tagTAVRIN_POINT> kFlatLine = {at(0.2f, 0.5f), at(0.7f, 0.5f)};
// Right, up, down-left, flat left and down: every direction a traverse plane turns to.
const std::initializer_list<tagTAVRIN_POINT> kTurns = {at(0.1f, 0.3f), at(0.4f, 0.3f), at(0.4f, 0.1f),
                                                       at(0.2f, 0.5f), at(0.1f, 0.5f), at(0.3f, 0.9f)};
const std::initializer_list<tagTAVRIN_POINT> kBroken = {at(0.1f, 0.3f), at(0.35f, 0.6f), at(0.6f, 0.35f),
                                                        at(0.85f, 0.65f)};

template <class T>
void region(Transcript& t, std::initializer_list<tagTAVRIN_POINT> points, bool closed, const char* label)
{
    Owned<T> f = make<T>(points);
    f->SetClosed(closed);
    char text[] = "Zone 7";
    if (label != nullptr) {
        f->SetLabelText(text, 6);
    }
    exercise(t, *f);
}

void vcaRule(Transcript& t, tagTAVRIN_RULE_TYPE type, std::initializer_list<tagTAVRIN_POINT> points,
             TAVRIN_ARROW_TYPE arrow, bool traverse, tagTAVRIN_LINE_TYPE lineType)
{
    Owned<VcaRule> f(VcaRule::NewInstance());
    f->SetRuleType(type);
    std::vector<tagTAVRIN_POINT> v(points);
    f->SetPoints(v.data(), static_cast<unsigned int>(v.size()));
    f->SetArrowDirection(arrow);
    f->SetIsTraversePlane(traverse);
    f->SetLineType(lineType);
    f->SetColors(0x20c040, 0xe03020);
    char text[] = "Tripwire";
    f->SetLabelText(text, 8);
    exercise(t, *f);
    f->SetClosed(false);
    const bool open = !f->GetClosed();
    f->SetClosed(true);
    t.say("opens and closes ", open, f->GetClosed());
}

// The calibration segment dragged by each of its points: along the line, past its far
// end, and from the line's start.
void calibrationDrags(Transcript& t, PdcRule& f)
{
    for (unsigned int selected : {1u, 2u}) {
        f.SetSelCaliPointIndex(selected);
        tagTAVRIN_POINT cali[2] = {};
        unsigned int count = 0;
        f.GetPDCCaliPoint(cali, &count);
        std::string line = "cali drag " + std::to_string(selected) + ":";
        for (tagTAVRIN_POINT shift : {at(0.03f, 0.05f), at(0.9f, 0.9f), at(-0.9f, -0.9f)}) {
            tagTAVRIN_POINT from = cali[selected - 1];
            tagTAVRIN_POINT to = at(from.x + shift.x, from.y + shift.y);
            const bool ok = f.MoveCaliPoints(from, to);
            f.GetPDCCaliPoint(cali, &count);
            line += std::string(" ") + (ok ? "+" : "-") + str(cali[0]) + str(cali[1]);
        }
        t.say(line);
    }
    draw(t, f, 640, 480);
}

void pdcRule(Transcript& t, bool lineMode, bool cali,
             std::vector<tagTAVRIN_POINT> caliPoints = {at(0.32f, 0.3f), at(0.5f, 0.62f)},
             std::initializer_list<tagTAVRIN_POINT> line = kSteepLine)
{
    Owned<PdcRule> f(PdcRule::NewInstance());
    f->SetVcaPDCLineOrRect(lineMode);
    std::vector<tagTAVRIN_POINT> v = lineMode ? std::vector<tagTAVRIN_POINT>(line)
                                              : std::vector<tagTAVRIN_POINT>(kConcave);
    f->SetPoints(v.data(), static_cast<unsigned int>(v.size()));
    tagTAVRIN_POINT tail = at(0.45f, 0.35f);
    tagTAVRIN_POINT tip = at(0.5f, 0.5f);
    f->SetArrowPoints(tail, tip);
    f->SetVcaPDCLineCali(cali);
    f->SetVcaPDCCaliShoulderLine(cali);
    if (!caliPoints.empty()) {
        f->SetPDCCaliPoint(caliPoints.data(), 2);
    }
    f->SetSelCaliPointIndex(cali ? 2 : 0);
    float widths[16] = {0.1f, 0.2f, 0.3f, 0.15f, 0.4f, 0.5f, 0.2f, 0.05f,
                        0.12f, 0.22f, 0.0f, 0.35f, 0.45f, 0.25f, 0.3f, 0.08f};
    f->SetTargetWidthLine(widths);
    tagTAVRIN_POINT singles[2] = {at(std::nanf(""), 0.2f), at(0.7f, 0.2f)};
    t.say("single refusals: null ", f->SetSinglePoints(nullptr, 1), " two ", f->SetSinglePoints(singles + 1, 2),
          " NaN ", f->SetSinglePoints(singles, 1));
    tagTAVRIN_POINT single = singles[1];
    f->SetSinglePoints(&single, 1);
    char text[] = "12";
    f->SetText(text);
    std::string tooLong(200, 'x');
    t.say("text of 200 ", f->SetText(&tooLong[0]));
    tagTAVRIN_POINT out[2] = {};
    f->GetArrowPoints(&out[0], &out[1]);
    t.say("arrow ", str(out[0]), " ", str(out[1]));
    if (cali) {
        calibrationDrags(t, *f);
    }
    exercise(t, *f);
    f->GetArrowPoints(&out[0], &out[1]);
    unsigned int count = 0;
    f->GetSinglePoints(&single, &count);
    t.say("single read ", f->GetSinglePoints(nullptr, &count), f->GetSinglePoints(&single, nullptr),
          " arrow read ", f->GetArrowPoints(&out[0], nullptr), f->GetArrowPoints(nullptr, &out[1]));
    t.say("arrow ", str(out[0]), " ", str(out[1]), " single ", str(single), " x", count);
}

void sizeFilter(Transcript& t, tagTAVRIN_SIZE_FILTER_TYPE type, int scheme, bool byDiagonal)
{
    {
        // Without a view size a square collapses onto its first corner.
        Owned<SizeFilter> unsized(SizeFilter::NewInstance());
        unsized->SetSizeFilterType(type);
        tagTAVRIN_POINT a = at(0.3f, 0.35f);
        tagTAVRIN_POINT b = at(0.55f, 0.6f);
        t.say("unsized diagonal ", unsized->SetDiagonal(a, b));
        readBack(t, *unsized, "unsized");
    }
    Owned<SizeFilter> f(SizeFilter::NewInstance());
    f->SetSizeFilterType(type);
    f->SetColor(scheme);
    f->SetWndSize(640, 480);
    tagTAVRIN_POINT a = at(0.3f, 0.35f);
    tagTAVRIN_POINT b = at(0.55f, 0.6f);
    if (byDiagonal) {
        // Past the picture's corner first (a square is bounded by the view), then in it.
        tagTAVRIN_POINT far = at(1.6f, 1.9f);
        t.say("diagonal ", f->SetDiagonal(a, far));
        readBack(t, *f, "past the corner");
        t.say("diagonal ", f->SetDiagonal(a, b));
    } else {
        tagTAVRIN_POINT corners[4] = {a, at(0.55f, 0.35f), b, at(0.3f, 0.6f)};
        f->SetPoints(corners, 4);
    }
    exercise(t, *f);
}

void atmCali(Transcript& t)
{
    Owned<AtmCali> f = make<AtmCali>({at(0.2f, 0.2f), at(0.7f, 0.2f), at(0.7f, 0.7f), at(0.2f, 0.7f)});
    tagTAVRIN_POINT a = at(0.3f, 0.4f);
    tagTAVRIN_POINT b = at(0.6f, 0.55f);
    f->SetLinePoints(a, b);
    exercise(t, *f);
    std::string line = "line ends:";
    for (tagTAVRIN_POINT p : {at(0.3f, 0.4f), at(0.6f, 0.55f), at(0.45f, 0.475f)}) {
        line += " " + std::to_string(f->CheckLinePointSelected(p));
    }
    f->SetLineSelPointIndex(2);
    tagTAVRIN_POINT from = at(0.6f, 0.55f);
    tagTAVRIN_POINT to = at(0.62f, 0.5f);
    f->MoveLinePoint(from, to);
    t.say("line read ", f->GetLinePoints(&a, &b), " ", f->GetLinePoints(nullptr, &b));
    tagTAVRIN_POINT head[2] = {};
    f->GetVCaliLineHead(b, head);
    t.say(line, " moved ", str(a), " ", str(b), " head ", str(head[0]), " ", str(head[1]));
    draw(t, *f, 640, 480);
}

template <class T>
void caliLine(Transcript& t, std::initializer_list<tagTAVRIN_POINT> points, tagTAVRIN_BEHAV_CALI_TYPE type)
{
    Owned<T> f = make<T>(points);
    f->SetCaliType(type);
    exercise(t, *f);
    std::vector<tagTAVRIN_POINT> v = vertices(*f);
    tagTAVRIN_POINT head[2] = {};
    f->SetWndSize(320, 240);  // the head is sized in pixels of the view last told
    f->GetVCaliLineHead(v[0], head);
    t.say("head ", str(head[0]), " ", str(head[1]));
}

void itsCali(Transcript& t, bool closed)
{
    Owned<ItsCali> f = make<ItsCali>(kConcave);
    f->SetClosed(closed);
    char width[] = "3.5m";
    char height[] = "12m";
    f->SetWidthLabelText(width, 4);
    f->SetHeightlabelText(height, 3);
    t.say("closed ", f->GetClosed());
    exercise(t, *f);
    tagTAVRIN_POINT v[4] = {at(0.3f, 0.5f), at(0.4f, 0.2f), at(0.5f, 0.1f), at(0.6f, 0.1f)};
    t.say("top vertex ", f->GetMinYPoint(v, 4), " of 3 ", f->GetMinYPoint(v, 3));
}

void pupil(Transcript& t, std::initializer_list<tagTAVRIN_POINT> points)
{
    Owned<PupilDistance> f = make<PupilDistance>(points);
    exercise(t, *f);
    std::vector<tagTAVRIN_POINT> v = vertices(*f);
    tagTAVRIN_POINT line[2] = {};
    f->SetWndSize(320, 240);
    f->GetPupilLine(v[1], line);
    t.say("pupil line ", str(line[0]), " ", str(line[1]));
}

void single(Transcript& t, bool bino)
{
    if (bino) {
        Owned<BinoCali> f = make<BinoCali>({at(0.4f, 0.45f)});
        f->SetRadius(25);  // without a view the radius has nothing to be measured in
        t.say("radius without a view ", f->Radius());
        f->SetWndSize(640, 480);  // the radius is given in pixels of the view
        f->SetRadius(30);
        t.say("radius ", f->Radius());
        f->SetWndSize(0, 0);
        f->SetRadius(50);  // refused while the view has no width
        f->SetWndSize(640, 480);
        t.say("radius kept ", f->Radius());
        exercise(t, *f);
    } else {
        Owned<LfCali> f = make<LfCali>({at(0.4f, 0.45f)});
        exercise(t, *f);
    }
}

// A line's calibration helpers on their own: the segment laid on the line for given
// calibration points, and where its bar goes, with and without a view size.
void calibrationHelpers(Transcript& t, Line& line)
{
    const tagTAVRIN_POINT inputs[][2] = {{at(0.0f, 0.0f), at(0.0f, 0.0f)}, {at(0.3f, 0.3f), at(0.3f, 0.35f)},
                                         {at(0.0f, 0.0f), at(0.05f, 0.0f)}, {at(0.1f, 0.1f), at(0.9f, 0.9f)},
                                         {at(std::nanf(""), 0.1f), at(0.2f, 0.2f)}};
    for (int size : {0, 640}) {
        line.SetWndSize(size, size * 3 / 4);
        std::string text = "cali helpers " + std::to_string(size) + ":";
        for (const auto& input : inputs) {
            tagTAVRIN_POINT in[2] = {input[0], input[1]};
            tagTAVRIN_POINT out[2] = {at(7.0f, 7.0f), at(7.0f, 7.0f)};
            tagTAVRIN_LINE bar{};
            line.GetCaliPoints(in, out);
            line.GetDrawCaliLine(in, &bar);
            text += " " + str(out[0]) + str(out[1]) + "|" + str(bar.start) + str(bar.end);
        }
        tagTAVRIN_POINT out[2] = {at(7.0f, 7.0f), at(7.0f, 7.0f)};
        line.GetCaliPoints(nullptr, out);
        t.say(text, " null ", str(out[0]));
    }
}

// A primitive made from its vertex array, as the figures make theirs; a line also gets its
// ends through setP1/setP2 and reads a three-entry array as its first two.
template <class T>
void primitive(Transcript& t, std::initializer_list<tagTAVRIN_POINT> points)
{
    std::vector<tagTAVRIN_POINT> v(points);
    T f(v.data(), static_cast<unsigned int>(v.size()));
    exerciseShape<T>(t, f);
    if constexpr (std::is_base_of_v<Line, T>) {
        tagTAVRIN_POINT three[3] = {at(0.1f, 0.2f), at(0.3f, 0.4f), at(0.5f, 0.6f)};
        t.say("three ", f.SetPoints(three, 3));
        readBack(t, f, "three");
        tagTAVRIN_POINT a = at(0.25f, 0.35f);
        tagTAVRIN_POINT b = at(0.45f, 0.55f);
        f.setP1(Point(&a));
        f.setP2(Point(&b));
        readBack(t, f, "ends");
        tagTAVRIN_POINT nan = at(std::nanf(""), 0.5f);
        t.say("line refusals: arrow NaN ", f.SetArrowPoints(nan, b), f.SetArrowPoints(a, nan), " cali three ",
              f.SetPDCCaliPoints(three, 3), " cali null ", f.SetPDCCaliPoints(nullptr, 2));
        f.setP1(Point(&nan));
        readBack(t, f, "end at NaN");
        std::vector<tagTAVRIN_POINT> ends = {at(0.15f, 0.25f), at(0.35f, 0.45f)};
        Line source(ends.data(), 2);
        static_cast<Line&>(f) = source;
        readBack(t, f, "assigned");
        calibrationHelpers(t, source);
        std::vector<tagTAVRIN_POINT> backwards = {ends[1], ends[0]};  // the left end second
        Line reversed(backwards.data(), 2);
        calibrationHelpers(t, reversed);
    }
}

struct Case {
    const char* name;
    std::function<void(Transcript&)> run;
    bool text;
    bool outline = false;  ///< glyphs with their dark outline
};

const Case kCases[] = {
    {"ShieldRegionConcave", [](Transcript& t) { region<ShieldRegion>(t, kConcave, true, "Zone"); }, false},
    {"ShieldRegionOpen", [](Transcript& t) { region<ShieldRegion>(t, kConcave, false, nullptr); }, false},
    {"ReferenceRegionOpen", [](Transcript& t) { region<ReferenceRegion>(t, kConcave, false, nullptr); }, false},
    {"PolygonPrimitive", [](Transcript& t) { primitive<Polygon>(t, kConcave); }, false},
    {"RectanglePrimitive", [](Transcript& t) { primitive<Rectangle>(t, {at(0.3f, 0.3f), at(0.6f, 0.3f),
                                                                       at(0.6f, 0.5f), at(0.3f, 0.5f)}); }, false},
    {"SquarePrimitive", [](Transcript& t) { primitive<Square>(t, {at(0.3f, 0.3f), at(0.6f, 0.3f),
                                                                 at(0.6f, 0.5f), at(0.3f, 0.5f)}); }, false},
    {"LinePrimitive", [](Transcript& t) { primitive<Line>(t, kSteepLine); }, false},
    {"ArrowPrimitive", [](Transcript& t) { primitive<Arrow>(t, kFlatLine); }, false},
    {"BrokenLinePrimitive", [](Transcript& t) { primitive<BrokenLine>(t, kBroken); }, false},
    {"ShieldRegionTriangle",
     [](Transcript& t) { region<ShieldRegion>(t, {at(0.2f, 0.2f), at(0.6f, 0.3f), at(0.3f, 0.6f)}, true, nullptr); },
     false},
    {"ShieldRegionBowTie", [](Transcript& t) { region<ShieldRegion>(t, kBowTie, true, nullptr); }, false},
    {"ReferenceRegion", [](Transcript& t) { region<ReferenceRegion>(t, kConcave, true, "Zone"); }, true},
    {"ReferenceRegionOutlined", [](Transcript& t) { region<ReferenceRegion>(t, kConcave, true, "Zone"); }, true, true},
    {"EnterRegionOpen", [](Transcript& t) { region<EnterRegion>(t, kConcave, false, "Zone"); }, false},
    {"EnterRegion", [](Transcript& t) { region<EnterRegion>(t, kBowTie, true, "Zone"); }, true},
    {"ITCPlateRegion", [](Transcript& t) { region<ITCPlateRegion>(t, kConcave, true, nullptr); }, false},
    {"ITCPlateRegionOpen", [](Transcript& t) { region<ITCPlateRegion>(t, kConcave, false, nullptr); }, false},
    {"VcaRuleRegion",
     [](Transcript& t) { vcaRule(t, TAVRIN_RULE_REGION, kConcave, TAVRIN_ARROW_BOTH, false, TAVRIN_LINE_PLAIN); },
     true},
    {"VcaRuleLineBoth",
     [](Transcript& t) { vcaRule(t, TAVRIN_RULE_LINE, kSteepLine, TAVRIN_ARROW_BOTH, false, TAVRIN_LINE_ARROW); },
     true},
    {"VcaRuleLineBothOutlined",
     [](Transcript& t) { vcaRule(t, TAVRIN_RULE_LINE, kSteepLine, TAVRIN_ARROW_BOTH, false, TAVRIN_LINE_ARROW); },
     true, true},
    {"VcaRuleLinePositive",
     [](Transcript& t) { vcaRule(t, TAVRIN_RULE_LINE, kSteepLine, TAVRIN_ARROW_POSITIVE, false, TAVRIN_LINE_PLAIN); },
     false},
    {"VcaRuleLineNegativeFlat",
     [](Transcript& t) { vcaRule(t, TAVRIN_RULE_LINE, kFlatLine, TAVRIN_ARROW_NEGATIVE, false, TAVRIN_LINE_ARROW); },
     true},
    {"VcaRuleLineNone",
     [](Transcript& t) { vcaRule(t, TAVRIN_RULE_LINE, kSteepLine, TAVRIN_ARROW_NONE, false, TAVRIN_LINE_ARROW); },
     false},
    {"VcaRuleTraverseSteep",
     [](Transcript& t) { vcaRule(t, TAVRIN_RULE_LINE, kSteepLine, TAVRIN_ARROW_BOTH, true, TAVRIN_LINE_ARROW); },
     true},
    {"VcaRuleTraverseFlatPositive",
     [](Transcript& t) { vcaRule(t, TAVRIN_RULE_LINE, kFlatLine, TAVRIN_ARROW_POSITIVE, true, TAVRIN_LINE_ARROW); },
     true},
    {"VcaRuleTraverseNegative",
     [](Transcript& t) {
         vcaRule(t, TAVRIN_RULE_LINE, {at(0.7f, 0.6f), at(0.3f, 0.25f)}, TAVRIN_ARROW_NEGATIVE, true,
                 TAVRIN_LINE_ARROW);
     },
     false},
    {"VcaRuleBrokenLine",
     [](Transcript& t) {
         vcaRule(t, TAVRIN_RULE_BROKEN_LINE, kBroken, TAVRIN_ARROW_BOTH, false, TAVRIN_LINE_ARROW);
     },
     true},
    {"VcaRuleBrokenTraverseBoth",
     [](Transcript& t) { vcaRule(t, TAVRIN_RULE_BROKEN_LINE, kTurns, TAVRIN_ARROW_BOTH, true, TAVRIN_LINE_ARROW); },
     true},
    {"VcaRuleBrokenTraversePositive",
     [](Transcript& t) { vcaRule(t, TAVRIN_RULE_BROKEN_LINE, kTurns, TAVRIN_ARROW_POSITIVE, true, TAVRIN_LINE_ARROW); },
     true},
    {"VcaRuleBrokenTraverseNegative",
     [](Transcript& t) { vcaRule(t, TAVRIN_RULE_BROKEN_LINE, kTurns, TAVRIN_ARROW_NEGATIVE, true, TAVRIN_LINE_ARROW); },
     true},
    {"VcaRuleBrokenLinePositive",
     [](Transcript& t) {
         vcaRule(t, TAVRIN_RULE_BROKEN_LINE, kBroken, TAVRIN_ARROW_POSITIVE, false, TAVRIN_LINE_PLAIN);
     },
     false},
    {"ITCLine",
     [](Transcript& t) {
         Owned<ITCLine> f = make<ITCLine>(kSteepLine);
         exercise(t, *f);
     },
     false},
    {"ITCLineGreen",
     [](Transcript& t) {
         Owned<ITCLine> f = make<ITCLine>(kFlatLine);
         f->SetLineType(TAVRIN_ITC_LINE_GREEN);
         exercise(t, *f);
     },
     true},
    {"Lane",
     [](Transcript& t) {
         Owned<Lane> f = make<Lane>({at(0.3f, 0.2f), at(0.5f, 0.2f), at(0.7f, 0.8f), at(0.2f, 0.8f)});
         tagTAVRIN_POINT tail = at(0.45f, 0.7f);
         tagTAVRIN_POINT tip = at(0.42f, 0.3f);
         f->SetArrowPoints(tail, tip);
         exercise(t, *f);
         f->GetArrowPoints(&tail, &tip);
         t.say("arrow ", str(tail), " ", str(tip), " ", f->GetArrowPoints(&tail, nullptr),
               f->GetArrowPoints(nullptr, &tip));
     },
     false},
    {"PdcRuleArea", [](Transcript& t) { pdcRule(t, false, false); }, true},
    {"PdcRuleLine", [](Transcript& t) { pdcRule(t, true, false); }, true},
    {"PdcRuleLineCalibration", [](Transcript& t) { pdcRule(t, true, true); }, false},
    {"PdcRuleCalibrationUnset", [](Transcript& t) { pdcRule(t, true, true, {}); }, false},
    {"PdcRuleCalibrationFromOrigin",
     [](Transcript& t) { pdcRule(t, true, true, {at(0.0f, 0.0f), at(0.5f, 0.62f)}); }, false},
    {"PdcRuleCalibrationVertical",
     [](Transcript& t) { pdcRule(t, true, true, {at(0.5f, 0.3f), at(0.5f, 0.6f)}, {at(0.5f, 0.2f), at(0.5f, 0.8f)}); },
     false},
    {"PdcRuleCalibrationFlat",
     [](Transcript& t) { pdcRule(t, true, true, {at(0.6f, 0.5f), at(0.3f, 0.5f)}, kFlatLine); }, false},
    {"PdcRuleCalibrationFar",
     [](Transcript& t) {
         pdcRule(t, true, true, {at(0.3f, 0.3f), at(0.6f, 0.5f)}, {at(-3e38f, 0.2f), at(3e38f, 0.7f)});
     },
     false},
    {"SizeFilterRectangle", [](Transcript& t) { sizeFilter(t, TAVRIN_SIZE_FILTER_RECT, 0, true); }, false},
    {"SizeFilterRectangleScheme1", [](Transcript& t) { sizeFilter(t, TAVRIN_SIZE_FILTER_RECT, 1, false); }, false},
    {"SizeFilterSquare", [](Transcript& t) { sizeFilter(t, TAVRIN_SIZE_FILTER_SQUARE, 2, true); }, false},
    {"AtmCali", [](Transcript& t) { atmCali(t); }, false},
    {"BehaviorCali", [](Transcript& t) { caliLine<BehaviorCali>(t, kSteepLine, TAVRIN_BEHAV_CALI_LINE); }, false},
    {"BehaviorCaliVertical",
     [](Transcript& t) { caliLine<BehaviorCali>(t, kFlatLine, TAVRIN_BEHAV_CALI_VERTICAL); }, false},
    {"BehaviorCheck", [](Transcript& t) { caliLine<BehaviorCheck>(t, kSteepLine, TAVRIN_BEHAV_CALI_LINE); }, false},
    {"ItsCali", [](Transcript& t) { itsCali(t, true); }, true},
    {"ItsCaliOpen", [](Transcript& t) { itsCali(t, false); }, false},
    {"PupilDistance", [](Transcript& t) { pupil(t, kSteepLine); }, false},
    {"PupilDistanceFlat", [](Transcript& t) { pupil(t, kFlatLine); }, false},
    {"ShieldRegionFar",
     [](Transcript& t) {
         region<ShieldRegion>(t, {at(-3e38f, 0.2f), at(0.6f, 3e38f), at(0.5f, 0.5f), at(0.2f, 0.6f)}, true, "Zone");
     },
     true},
    {"VcaRuleLineFar",
     [](Transcript& t) {
         vcaRule(t, TAVRIN_RULE_LINE, {at(-3e38f, 0.2f), at(3e38f, 0.7f)}, TAVRIN_ARROW_BOTH, false,
                 TAVRIN_LINE_ARROW);
     },
     true},
    {"PupilDistanceFar", [](Transcript& t) { pupil(t, {at(-3e38f, 0.2f), at(3e38f, 0.7f)}); }, false},
    {"BinoCali", [](Transcript& t) { single(t, true); }, false},
    {"LfCali", [](Transcript& t) { single(t, false); }, false},
};

std::string goldenPath(const std::string& name) { return std::string(TAVRIN_GOLDEN_DIR) + "/" + name + ".txt"; }

std::vector<std::string> lines(const std::string& text)
{
    std::vector<std::string> out;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        out.push_back(line);
    }
    return out;
}

// Text rendering is off until a host turns it on; read before any test can touch it.
const bool g_textOffAtStart = !TextRendering::IsEnabled();

TEST(TextRenderingSwitch, OffUntilAHostTurnsItOn) { EXPECT_TRUE(g_textOffAtStart); }

class TranscriptTest : public GlTest, public ::testing::WithParamInterface<Case> {};

TEST_P(TranscriptTest, MatchesTheCommittedTranscript)
{
    const Case& c = GetParam();
    TextRendering::SetEnabled(c.text);
    TextRendering::SetOutline(c.outline);
    Transcript t;
    c.run(t);
    TextRendering::SetEnabled(false);
    TextRendering::SetOutline(false);
    const std::string path = goldenPath(c.name);
    if (std::getenv("TAVRIN_UPDATE_GOLDEN") != nullptr) {
        std::ofstream(path) << t.text();
        return;
    }
    std::ifstream in(path);
    ASSERT_TRUE(in.good()) << "no transcript at " << path << " (TAVRIN_UPDATE_GOLDEN=1 writes it)";
    std::stringstream expected;
    expected << in.rdbuf();
    const std::vector<std::string> want = lines(expected.str());
    const std::vector<std::string> got = lines(t.text());
    for (std::size_t i = 0; i < std::max(want.size(), got.size()); ++i) {
        const std::string w = i < want.size() ? want[i] : "(end)";
        const std::string g = i < got.size() ? got[i] : "(end)";
        ASSERT_EQ(w, g) << path << ":" << i + 1 << " is the first line that differs";
    }
}

// The outline touches drawn glyphs only: with text rendering off, every case's transcript
// is the same with the outline on.
TEST_F(GlTest, OutlineWithoutTextChangesNoCall)
{
    for (const Case& c : kCases) {
        if (c.text) {
            continue;
        }
        Transcript plain;
        c.run(plain);
        TextRendering::SetOutline(true);
        Transcript outlined;
        c.run(outlined);
        TextRendering::SetOutline(false);
        EXPECT_EQ(plain.text(), outlined.text()) << c.name;
    }
}

INSTANTIATE_TEST_SUITE_P(EveryKind, TranscriptTest, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<Case>& info) { return std::string(info.param.name); });

}  // namespace
