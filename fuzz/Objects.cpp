// The analytics objects and the registry under fuzzing. A model of what the host holds
// (its own references and the registry's slots) is kept beside the library and compared
// after every call, and the vertices that GetPoints reports are checked around every
// edit: finite, unchanged by queries and refusals, moved whole or by one vertex.

#include "Harness.h"

#include <Tavrin/Tavrin.h>

#include <algorithm>
#include <vector>

using namespace Tavrin;

namespace fuzz {

namespace {

enum class Kind {
    VcaRule,
    ITCLine,
    Lane,
    PdcRule,
    SizeFilter,
    ShieldRegion,
    ReferenceRegion,
    EnterRegion,
    ITCPlateRegion,
    AtmCali,
    BehaviorCali,
    BehaviorCheck,
    ItsCali,
    PupilDistance,
    BinoCali,
    LfCali,
    Count
};

const unsigned kKinds = static_cast<unsigned>(Kind::Count);
const std::size_t kMaxObjects = 12;
const std::size_t kMaxSlots = 48;
const int kMaxHostRefs = 4;

// The reference count is protected; a pointer to the member, formed through a derived
// class, reads it from any object without touching the object's type.
struct RefCountPeek : VcaObject {
    static int VcaObject::*member() { return &RefCountPeek::m_refCount; }
};

int refCount(VcaObject* obj) { return obj->*RefCountPeek::member(); }

template <class F>
auto withTyped(Kind kind, VcaObject* obj, F&& f)
{
    switch (kind) {
    case Kind::VcaRule: return f(static_cast<VcaRule*>(obj));
    case Kind::ITCLine: return f(static_cast<ITCLine*>(obj));
    case Kind::Lane: return f(static_cast<Lane*>(obj));
    case Kind::PdcRule: return f(static_cast<PdcRule*>(obj));
    case Kind::SizeFilter: return f(static_cast<SizeFilter*>(obj));
    case Kind::ShieldRegion: return f(static_cast<ShieldRegion*>(obj));
    case Kind::ReferenceRegion: return f(static_cast<ReferenceRegion*>(obj));
    case Kind::EnterRegion: return f(static_cast<EnterRegion*>(obj));
    case Kind::ITCPlateRegion: return f(static_cast<ITCPlateRegion*>(obj));
    case Kind::AtmCali: return f(static_cast<AtmCali*>(obj));
    case Kind::BehaviorCali: return f(static_cast<BehaviorCali*>(obj));
    case Kind::BehaviorCheck: return f(static_cast<BehaviorCheck*>(obj));
    case Kind::ItsCali: return f(static_cast<ItsCali*>(obj));
    case Kind::PupilDistance: return f(static_cast<PupilDistance*>(obj));
    case Kind::BinoCali: return f(static_cast<BinoCali*>(obj));
    case Kind::LfCali:
    case Kind::Count: break;
    }
    return f(static_cast<LfCali*>(obj));
}

VcaObject* create(Kind kind)
{
    return withTyped(kind, nullptr, [](auto* typed) -> VcaObject* {
        return std::remove_pointer_t<decltype(typed)>::NewInstance();
    });
}

// The vertex buffer GetPoints needs: the most vertices the class can hold.
unsigned capacity(Kind kind)
{
    switch (kind) {
    case Kind::ITCPlateRegion: return 20;
    case Kind::SizeFilter:
    case Kind::AtmCali: return 4;
    case Kind::PupilDistance: return 2;
    case Kind::BinoCali:
    case Kind::LfCali: return 1;
    default: return 10;
    }
}

// The largest count SetPoints accepts before asking a primitive.
unsigned setLimit(Kind kind) { return kind == Kind::AtmCali ? 10 : capacity(kind); }

bool singlePoint(Kind kind) { return kind == Kind::BinoCali || kind == Kind::LfCali; }

struct Tracked {
    VcaObject* obj = nullptr;
    Kind kind = Kind::VcaRule;
    int hostRefs = 0;
    unsigned sizeFilterType = 0;
};

struct Host {
    std::vector<Tracked> objects;
    bool registryExists = false;
    std::vector<VcaObject*> slots;

    int slotsHolding(const VcaObject* obj) const
    {
        return static_cast<int>(std::count(slots.begin(), slots.end(), obj));
    }

    VcaObjectContainer* registry()
    {
        VcaObjectContainer* r = VcaObjectContainer::Instance();
        FUZZ_CHECK(r != nullptr, "VcaObjectContainer::Instance");
        if (!registryExists) {
            registryExists = true;
            slots.clear();
        }
        return r;
    }

    // Objects whose last reference went are gone from the library: forget them.
    void reap()
    {
        objects.erase(std::remove_if(objects.begin(), objects.end(),
                                     [this](const Tracked& t) {
                                         return t.hostRefs + slotsHolding(t.obj) == 0;
                                     }),
                      objects.end());
    }

    void checkModel()
    {
        for (const Tracked& t : objects) {
            FUZZ_CHECK(refCount(t.obj) == t.hostRefs + slotsHolding(t.obj),
                       "reference count matches the host's and the registry's references");
        }
        if (!registryExists) {
            return;
        }
        VcaObjectContainer* r = VcaObjectContainer::Instance();
        for (std::size_t i = 0; i < slots.size(); ++i) {
            FUZZ_CHECK(r->GetVcaObject(static_cast<int>(i)) == slots[i], "registry slot contents");
        }
        FUZZ_CHECK(r->GetVcaObject(static_cast<int>(slots.size())) == nullptr, "no slot past the last");
        FUZZ_CHECK(r->GetVcaObject(-1) == nullptr, "no slot at -1");
    }

    Tracked* find(VcaObject* obj)
    {
        for (Tracked& t : objects) {
            if (t.obj == obj) {
                return &t;
            }
        }
        return nullptr;
    }
};

Snapshot snapshot(const Tracked& t)
{
    return readBack(capacity(t.kind), [&](tagTAVRIN_POINT* points, unsigned* count) {
        return withTyped(t.kind, t.obj, [&](auto* o) { return o->GetPoints(points, count); });
    });
}

// How many reported vertices belong to the figure itself: an ITCLine reports the count
// of its last SetPoints, of which only the first two live in its line.
unsigned figureVertices(const Tracked& t) { return t.kind == Kind::ITCLine ? 2u : 20u; }

// Whether an accepted vertex drag keeps every vertex inside the picture: not for a
// square, which is rebuilt from the cursor without clamping, nor for a "rectangle" given
// four arbitrary corners, whose neighbours follow a corner drag unchecked.
bool vertexDragStaysInside(const Tracked& t, const Snapshot& before)
{
    switch (t.kind) {
    case Kind::SizeFilter: return t.sizeFilterType == 0 && properRectangle(before);
    case Kind::AtmCali: return properRectangle(before);
    default: return true;
    }
}

void checkDraw(const Tracked& t, FuzzInput& in)
{
    const int w = in.viewSize();
    const int h = in.viewSize();
    if (in.pick(4) == 0) {
        checkCapturedDraw([&] { t.obj->Draw(nullptr, w, h, true); });
        return;
    }
    sink::beginDraw();
    t.obj->Draw(in.flag() ? nullptr : &in, w, h, in.flag());
    sink::expectRestored("VcaObject::Draw");
}

// SetPoints: a refusal changes nothing, an acceptance holds only finite vertices.
void setPointsOp(Tracked& t, FuzzInput& in, const Snapshot& before)
{
    const unsigned count = in.count();
    std::vector<tagTAVRIN_POINT> buffer = pointArray(in, count, 2);
    tagTAVRIN_POINT* points = in.pick(16) == 0 ? nullptr : buffer.data();
    const bool ok = withTyped(t.kind, t.obj, [&](auto* o) { return o->SetPoints(points, count); });
    if (points == nullptr || count > setLimit(t.kind)) {
        FUZZ_CHECK(!ok, "SetPoints refuses a null array or too many vertices");
    }
    // An ITCLine keeps the refused vertices in its stored copy, deliberately.
    if (!ok && t.kind != Kind::ITCLine) {
        FUZZ_CHECK(sameVertices(before, snapshot(t)), "a refused SetPoints leaves GetPoints unchanged");
    }
    for (unsigned i = 0; ok && i < count; ++i) {
        FUZZ_CHECK(finitePoint(points[i]), "SetPoints accepts only finite vertices");
    }
}

void moveOp(Tracked& t, FuzzInput& in, const Snapshot& before, bool whole)
{
    tagTAVRIN_POINT from = in.point();
    tagTAVRIN_POINT to = in.near(from);
    const unsigned selected = t.obj->GetSelPointIndex();
    if (whole) {
        t.obj->Move(from, to);
    } else {
        t.obj->MovePoint(from, to);
    }
    const Snapshot after = snapshot(t);
    // A square's corner is placed from the cursor alone; a single-point figure has no
    // vertex drag; a size filter's and an ATM figure's corners drag their neighbours.
    const bool square = t.kind == Kind::SizeFilter && t.sizeFilterType != 0;
    checkDrag(before, after, from, to,
              DragRule{whole, !whole && square, t.kind != Kind::SizeFilter && t.kind != Kind::AtmCali,
                       whole || vertexDragStaysInside(t, before), singlePoint(t.kind) ? ~0u : selected,
                       figureVertices(t)});
}

// The setters and queries of the base that leave the vertices alone.
void baseOp(Tracked& t, FuzzInput& in)
{
    tagTAVRIN_POINT p = in.point();
    switch (in.pick(8)) {
    case 0: t.obj->SetObjStatus(static_cast<tagTAVRIN_OBJ_STATUS>(in.enumValue())); break;
    case 1: t.obj->SetSelPointIndex(in.index()); break;
    case 2: t.obj->SetClosed(in.flag()); break;
    case 3: t.obj->SetWndSize(in.viewSize(), in.viewSize()); break;
    case 4: t.obj->SetIsTraversePlane(in.flag()); break;
    case 5: {
        tagTAVRIN_VCA_RECT rect{};
        t.obj->GetDrawLabelRect(p, rect);
        break;
    }
    case 6: {
        // The label takes min(length, 16) raw bytes: the buffer holds exactly what may be read.
        const unsigned length = in.pick(3) == 0 ? in.u32() : in.byte() % 40;
        std::vector<char> raw(std::min(std::max(length, 1u), 16u));
        for (char& c : raw) {
            c = static_cast<char>(in.byte());
        }
        t.obj->SetLabelText(in.pick(8) == 0 ? nullptr : raw.data(), length);
        break;
    }
    default: {
        const unsigned size = in.byte() % 24;
        std::vector<char> buffer(size == 0 ? 1 : size);
        t.obj->GetLabelText(in.pick(8) == 0 ? nullptr : buffer.data(), size);
        break;
    }
    }
}

// The people-counting and size-filter operations of the base, on every class; they may
// move vertices.
void calibrationOp(Tracked& t, FuzzInput& in)
{
    tagTAVRIN_POINT from = in.point();
    tagTAVRIN_POINT to = in.near(from);
    switch (in.pick(6)) {
    case 0: t.obj->SetVcaPDCLineOrRect(in.flag()); break;
    case 1: t.obj->SetVcaPDCLineCali(in.flag()); break;
    case 2: {
        const unsigned count = in.count();
        std::vector<tagTAVRIN_POINT> buffer = pointArray(in, count, 2);
        t.obj->SetPDCCaliPoint(in.pick(8) == 0 ? nullptr : buffer.data(), count);
        break;
    }
    case 3: {
        tagTAVRIN_POINT points[2] = {};
        unsigned count = 0;
        t.obj->GetPDCCaliPoint(in.pick(4) == 0 ? nullptr : points, in.pick(4) == 0 ? nullptr : &count);
        t.obj->CheckCaliPointSelected(from);
        break;
    }
    case 4: t.obj->MoveCaliPoints(from, to); break;
    default: {
        const unsigned type = in.enumValue();
        t.obj->SetSizeFilterType(static_cast<tagTAVRIN_SIZE_FILTER_TYPE>(type));
        if (t.kind == Kind::SizeFilter) {
            t.sizeFilterType = type;
        }
        break;
    }
    }
}

// A line head is computed in full or not written: never half a bar, never NaN from
// finite input.
template <class T>
void lineHeadOp(FuzzInput& in, T* obj, void (T::*head)(tagTAVRIN_POINT&, tagTAVRIN_POINT*))
{
    tagTAVRIN_POINT end = in.point();
    std::vector<tagTAVRIN_POINT> out(2, tagTAVRIN_POINT{std::nanf(""), std::nanf("")});
    (obj->*head)(end, in.pick(8) == 0 ? nullptr : out.data());
    if (finitePoint(end)) {
        FUZZ_CHECK(finitePoint(out[0]) == finitePoint(out[1]), "a line head is written whole");
    }
}

// Either pointer may be null.
template <class T>
void arrowPointsOp(FuzzInput& in, T* obj, tagTAVRIN_POINT& a, tagTAVRIN_POINT& b)
{
    in.flag() ? obj->SetArrowPoints(a, b)
              : obj->GetArrowPoints(in.pick(4) == 0 ? nullptr : &a, in.pick(4) == 0 ? nullptr : &b);
}

void pdcOp(PdcRule* p, FuzzInput& in, tagTAVRIN_POINT& a, tagTAVRIN_POINT& b)
{
    std::vector<float> widths(16);
    for (float& v : widths) {
        v = in.pick(3) == 0 ? 0.0f : in.coord();
    }
    unsigned count = in.count();
    std::vector<tagTAVRIN_POINT> singles = pointArray(in, count, 1);
    std::vector<char> label = text(in);
    const bool null = in.pick(8) == 0;
    switch (in.pick(7)) {
    case 0: arrowPointsOp(in, p, a, b); break;
    case 1: p->SetVcaPDCCaliShoulderLine(in.flag()); break;
    case 2: p->SetSelCaliPointIndex(in.index()); break;
    case 3: p->SetTargetWidthLine(null ? nullptr : widths.data()); break;
    case 4: p->SetSinglePoints(null ? nullptr : singles.data(), count); break;
    case 5: p->GetSinglePoints(null ? nullptr : &a, in.pick(4) == 0 ? nullptr : &count); break;
    default: p->SetText(null ? nullptr : label.data()); break;
    }
}

void caliOp(Tracked& t, FuzzInput& in, tagTAVRIN_POINT& a, tagTAVRIN_POINT& b)
{
    if (t.kind == Kind::AtmCali) {
        auto* c = static_cast<AtmCali*>(t.obj);
        switch (in.pick(5)) {
        case 0: c->SetLinePoints(a, b); break;
        case 1:
            FUZZ_CHECK(c->GetLinePoints(&a, &b) && finitePoint(a) && finitePoint(b), "the calibration line stays finite");
            break;
        case 2: c->MoveLinePoint(a, b); break;
        case 3:
            FUZZ_CHECK(c->CheckLinePointSelected(a) <= 2, "CheckLinePointSelected names an end or none");
            c->SetLineSelPointIndex(in.index());
            break;
        default: lineHeadOp(in, c, &AtmCali::GetVCaliLineHead); break;
        }
    } else if (t.kind == Kind::ItsCali) {
        auto* c = static_cast<ItsCali*>(t.obj);
        std::vector<char> label = text(in);
        char* p = in.pick(8) == 0 ? nullptr : label.data();
        const unsigned length = in.pick(4) == 0 ? in.u32() : in.byte();
        const unsigned count = in.byte() % 24;
        std::vector<tagTAVRIN_POINT> points = pointArray(in, count, 1);
        in.flag() ? c->SetWidthLabelText(p, length) : c->SetHeightlabelText(p, length);
        const unsigned top = c->GetMinYPoint(in.pick(8) == 0 ? nullptr : points.data(), count);
        FUZZ_CHECK(top == 0 || top < count, "GetMinYPoint names a vertex or 0");
    } else if (t.kind == Kind::PupilDistance) {
        lineHeadOp(in, static_cast<PupilDistance*>(t.obj), &PupilDistance::GetPupilLine);
    } else if (t.kind == Kind::BinoCali) {
        static_cast<BinoCali*>(t.obj)->SetRadius(in.pick(4) == 0 ? in.u32() : in.byte());
    } else if (t.kind == Kind::BehaviorCali || t.kind == Kind::BehaviorCheck) {
        auto* c = static_cast<BehaviorCali*>(t.obj);
        c->SetCaliType(static_cast<tagTAVRIN_BEHAV_CALI_TYPE>(in.enumValue()));
        lineHeadOp(in, c, &BehaviorCali::GetVCaliLineHead);
    }
}

// Each class's own operations, with arbitrary arguments.
void classOp(Tracked& t, FuzzInput& in)
{
    tagTAVRIN_POINT a = in.point();
    tagTAVRIN_POINT b = in.near(a);
    const unsigned value = in.enumValue();
    switch (t.kind) {
    case Kind::VcaRule: {
        auto* r = static_cast<VcaRule*>(t.obj);
        switch (in.pick(4)) {
        case 0: r->SetColors(in.u32(), in.u32()); break;
        case 1: r->SetLineType(static_cast<tagTAVRIN_LINE_TYPE>(value)); break;
        case 2: r->SetRuleType(static_cast<tagTAVRIN_RULE_TYPE>(value)); break;
        default: r->SetArrowDirection(static_cast<TAVRIN_ARROW_TYPE>(value)); break;
        }
        break;
    }
    case Kind::ITCLine: static_cast<ITCLine*>(t.obj)->SetLineType(static_cast<tagTAVRIN_ITC_LINE_TYPE>(value)); break;
    case Kind::Lane: arrowPointsOp(in, static_cast<Lane*>(t.obj), a, b); break;
    case Kind::PdcRule: pdcOp(static_cast<PdcRule*>(t.obj), in, a, b); break;
    case Kind::SizeFilter: {
        auto* f = static_cast<SizeFilter*>(t.obj);
        const Snapshot before = snapshot(t);
        f->SetColor(static_cast<int>(value));
        if (!f->SetDiagonal(a, b)) {
            FUZZ_CHECK(sameVertices(before, snapshot(t)), "a refused SetDiagonal changes nothing");
        }
        break;
    }
    default: caliOp(t, in, a, b); break;
    }
}

// The points an object keeps besides its vertices, as the host reads them back.
bool auxiliaryFinite(const Tracked& t)
{
    tagTAVRIN_POINT p[2] = {};
    unsigned count = 0;
    switch (t.kind) {
    case Kind::Lane: static_cast<Lane*>(t.obj)->GetArrowPoints(&p[0], &p[1]); break;
    case Kind::PdcRule: {
        auto* r = static_cast<PdcRule*>(t.obj);
        tagTAVRIN_POINT single{};
        r->GetSinglePoints(&single, &count);
        r->GetPDCCaliPoint(p, &count);
        if (!finitePoint(single) || !finitePoint(p[0]) || !finitePoint(p[1])) {
            return false;
        }
        r->GetArrowPoints(&p[0], &p[1]);
        break;
    }
    case Kind::AtmCali: static_cast<AtmCali*>(t.obj)->GetLinePoints(&p[0], &p[1]); break;
    default: break;
    }
    return finitePoint(p[0]) && finitePoint(p[1]);
}

// The editing toolkit on any object: a refusal leaves the vertices alone, results are
// finite, drawing is checked by the sink.
void editingOp(Tracked& t, FuzzInput& in, const Snapshot& before)
{
    tagTAVRIN_POINT p = in.point();
    const int w = in.viewSize();
    const int h = in.viewSize();
    switch (in.pick(6)) {
    case 0:
        if (!InsertVertex(t.obj, in.index(), p)) {
            FUZZ_CHECK(sameVertices(before, snapshot(t)), "a refused InsertVertex changes nothing");
        }
        break;
    case 1:
        if (!RemoveVertex(t.obj, in.index())) {
            FUZZ_CHECK(sameVertices(before, snapshot(t)), "a refused RemoveVertex changes nothing");
        }
        break;
    case 2: {
        const EdgeHit hit = HitEdge(t.obj, p, w, h, in.coord() * 40.0f);
        FUZZ_CHECK(!hit.hit || (finitePoint(hit.foot) && std::isfinite(hit.distance)), "an edge hit is finite");
        break;
    }
    case 3:
        if (!Nudge(t.obj, in.coord() * 100.0f, in.coord() * 100.0f, w, h)) {
            FUZZ_CHECK(sameVertices(before, snapshot(t)), "a refused Nudge changes nothing");
        }
        break;
    case 4: {
        const unsigned count = in.byte() % 8;
        std::vector<tagTAVRIN_POINT> track = pointArray(in, count, 1);
        const std::vector<CrossingEvent> events = TrackCrossings(t.obj, track.data(), count);
        for (const CrossingEvent& e : events) {
            FUZZ_CHECK(finitePoint(e.point) && e.trackSegment + 1 < count, "a crossing lies on the track");
        }
        sink::beginDraw();
        DrawTrack(track.data(), count, events, w, h);
        sink::expectRestored("DrawTrack");
        break;
    }
    default:
        sink::beginDraw();
        DrawSelfCrossings(t.obj, w, h);
        sink::expectRestored("DrawSelfCrossings");
        break;
    }
}

// Coordinate conversions: a refusal writes nothing.
void convertOp(FuzzInput& in)
{
    const unsigned count = in.byte() % 6;
    std::vector<tagTAVRIN_POINT> points = pointArray(in, count, 1);
    std::vector<tagTAVRIN_POINT> out(points.size(), tagTAVRIN_POINT{7.0f, 7.0f});
    const auto from = static_cast<CoordinateSpace>(in.pick(4));
    const auto to = static_cast<CoordinateSpace>(in.pick(4));
    if (!ConvertPoints(points.data(), count, from, to, out.data(), in.viewSize(), in.viewSize())) {
        for (const tagTAVRIN_POINT& p : out) {
            FUZZ_CHECK(p.x == 7.0f && p.y == 7.0f, "a refused conversion writes nothing");
        }
    } else {
        FUZZ_CHECK(allPoints(out.data(), count, finitePoint), "converted points are finite");
    }
}

void objectOp(Tracked& t, FuzzInput& in)
{
    const Snapshot before = snapshot(t);
    FUZZ_CHECK(allFinite(before), "GetPoints reports finite vertices");
    bool mayChange = true;
    switch (in.pick(13)) {
    case 0:
    case 1: setPointsOp(t, in, before); break;
    case 2: moveOp(t, in, before, true); break;
    case 3:
    case 4: moveOp(t, in, before, false); break;
    case 5: {
        tagTAVRIN_POINT p = in.point();
        t.obj->CheckSelected(p);
        t.obj->IsNull();
        const unsigned hit = t.obj->CheckPointSelected(p);
        FUZZ_CHECK(hit <= (singlePoint(t.kind) ? 0u : std::max(before.count, 2u)),
                   "CheckPointSelected names a vertex or none");
        mayChange = false;
        break;
    }
    case 6:
    case 7:
        checkDraw(t, in);
        // An ITCLine takes its line's count on every draw, deliberately.
        mayChange = t.kind == Kind::ITCLine;
        break;
    case 8:
        baseOp(t, in);
        mayChange = false;
        break;
    case 9: calibrationOp(t, in); break;
    case 10: classOp(t, in); break;
    default: editingOp(t, in, before); break;
    }
    const Snapshot after = snapshot(t);
    FUZZ_CHECK(allFinite(after), "GetPoints reports finite vertices");
    FUZZ_CHECK(auxiliaryFinite(t), "arrow, calibration and single points stay finite");
    if (!mayChange) {
        FUZZ_CHECK(sameVertices(before, after), "a query or setter leaves the vertices alone");
    }
}
void registryOp(Host& host, FuzzInput& in)
{
    switch (in.pick(5)) {
    case 0:
        host.registry();
        break;
    case 1: {
        const bool existed = host.registryExists;
        FUZZ_CHECK(VcaObjectContainer::Release() == existed, "Release reports whether a registry existed");
        FUZZ_CHECK(!VcaObjectContainer::Release(), "a second Release finds nothing");
        host.registryExists = false;
        host.slots.clear();
        host.reap();
        break;
    }
    case 2: {
        VcaObjectContainer* r = host.registry();
        VcaObject* obj = nullptr;
        if (!host.objects.empty() && in.pick(8) != 0) {
            obj = host.objects[in.pick(static_cast<unsigned>(host.objects.size()))].obj;
        }
        if (obj != nullptr && host.slots.size() >= kMaxSlots &&
            std::find(host.slots.begin(), host.slots.end(), nullptr) == host.slots.end()) {
            break;
        }
        const int index = r->AddVcaObject(obj);
        if (obj == nullptr) {
            FUZZ_CHECK(index == -1, "AddVcaObject(nullptr) is -1");
            break;
        }
        const auto empty = std::find(host.slots.begin(), host.slots.end(), nullptr);
        const int expected = static_cast<int>(empty - host.slots.begin());
        FUZZ_CHECK(index == expected, "AddVcaObject takes the first empty slot");
        if (empty == host.slots.end()) {
            host.slots.push_back(obj);
        } else {
            *empty = obj;
        }
        break;
    }
    case 3: {
        VcaObjectContainer* r = host.registry();
        const int index = in.slot();
        const bool occupied = index >= 0 && static_cast<std::size_t>(index) < host.slots.size() &&
                              host.slots[static_cast<std::size_t>(index)] != nullptr;
        FUZZ_CHECK(r->DelVcaObject(index) == occupied, "DelVcaObject result");
        if (occupied) {
            host.slots[static_cast<std::size_t>(index)] = nullptr;
            host.reap();
        }
        break;
    }
    default: {
        VcaObjectContainer* r = host.registry();
        const int index = in.slot();
        VcaObject* expected = nullptr;
        if (index >= 0 && static_cast<std::size_t>(index) < host.slots.size()) {
            expected = host.slots[static_cast<std::size_t>(index)];
        }
        VcaObject* got = r->GetVcaObject(index);
        FUZZ_CHECK(got == expected, "GetVcaObject returns the slot's object");
        // The host may work on an object it reaches only through the registry.
        if (got != nullptr && in.flag()) {
            Tracked* t = host.find(got);
            FUZZ_CHECK(t != nullptr, "a registered object is alive");
            objectOp(*t, in);
        }
        break;
    }
    }
}

void referenceOp(Host& host, FuzzInput& in)
{
    if (host.objects.empty()) {
        return;
    }
    Tracked& t = host.objects[in.pick(static_cast<unsigned>(host.objects.size()))];
    if (in.flag()) {
        if (t.hostRefs < kMaxHostRefs) {
            t.obj->AddRef();
            ++t.hostRefs;
        }
    } else if (t.hostRefs > 0) {
        --t.hostRefs;
        t.obj->ReleaseRef();
        host.reap();
    }
}

void tearDown(Host& host)
{
    for (Tracked& t : host.objects) {
        while (t.hostRefs > 0) {
            --t.hostRefs;
            t.obj->ReleaseRef();
        }
    }
    host.reap();
    FUZZ_CHECK(VcaObjectContainer::Release() == host.registryExists, "Release at the end");
    host.registryExists = false;
    host.slots.clear();
    host.reap();
    FUZZ_CHECK(host.objects.empty(), "every object released");
}

}  // namespace

void runObjects(FuzzInput& in)
{
    Host host;
    // Start from no registry: an earlier input always releases its own.
    FUZZ_CHECK(!VcaObjectContainer::Release(), "no registry left from an earlier input");
    for (int step = 0; step < 256 && !in.empty(); ++step) {
        switch (in.pick(8)) {
        case 0:
            if (host.objects.size() < kMaxObjects) {
                const Kind kind = static_cast<Kind>(in.pick(kKinds));
                VcaObject* obj = create(kind);
                FUZZ_CHECK(obj != nullptr, "NewInstance");
                Tracked t;
                t.obj = obj;
                t.kind = kind;
                t.hostRefs = 1;
                host.objects.push_back(t);
            }
            break;
        case 1:
            registryOp(host, in);
            break;
        case 2:
            referenceOp(host, in);
            break;
        case 3:
            TextRendering::SetEnabled(in.flag());
            TextRendering::SetOutline(in.flag());
            convertOp(in);
            if (in.flag()) {
                for (const SceneHint& hint : GetSceneHints()) {
                    FUZZ_CHECK(hint.slot >= 0 && static_cast<std::size_t>(hint.slot) < host.slots.size(),
                               "a hint names an occupied slot");
                }
            }
            break;
        default:
            if (!host.objects.empty()) {
                objectOp(host.objects[in.pick(static_cast<unsigned>(host.objects.size()))], in);
            }
            break;
        }
        host.checkModel();
    }
    tearDown(host);
    TextRendering::SetEnabled(false);
    TextRendering::SetOutline(false);
}

}  // namespace fuzz
