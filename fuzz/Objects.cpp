// The analytics objects and the registry under fuzzing. A model of what the host holds
// (its own references, the registry's slots, each object's label text) is kept beside
// the library and compared after every call: the reference counts, the slots, the
// vertices that GetPoints reports before and after each edit.

#include "Harness.h"

#include <Tavrin/Tavrin.h>

#include <algorithm>
#include <cstdio>
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

VcaObject* create(Kind kind)
{
    switch (kind) {
    case Kind::VcaRule: return VcaRule::NewInstance();
    case Kind::ITCLine: return ITCLine::NewInstance();
    case Kind::Lane: return Lane::NewInstance();
    case Kind::PdcRule: return PdcRule::NewInstance();
    case Kind::SizeFilter: return SizeFilter::NewInstance();
    case Kind::ShieldRegion: return ShieldRegion::NewInstance();
    case Kind::ReferenceRegion: return ReferenceRegion::NewInstance();
    case Kind::EnterRegion: return EnterRegion::NewInstance();
    case Kind::ITCPlateRegion: return ITCPlateRegion::NewInstance();
    case Kind::AtmCali: return AtmCali::NewInstance();
    case Kind::BehaviorCali: return BehaviorCali::NewInstance();
    case Kind::BehaviorCheck: return BehaviorCheck::NewInstance();
    case Kind::ItsCali: return ItsCali::NewInstance();
    case Kind::PupilDistance: return PupilDistance::NewInstance();
    case Kind::BinoCali: return BinoCali::NewInstance();
    case Kind::LfCali: return LfCali::NewInstance();
    case Kind::Count: break;
    }
    return nullptr;
}

const char* nameOf(Kind kind)
{
    static const char* names[] = {"VcaRule",       "ITCLine",         "Lane",
                                  "PdcRule",       "SizeFilter",      "ShieldRegion",
                                  "ReferenceRegion", "EnterRegion",   "ITCPlateRegion",
                                  "AtmCali",       "BehaviorCali",    "BehaviorCheck",
                                  "ItsCali",       "PupilDistance",   "BinoCali",
                                  "LfCali"};
    return names[static_cast<unsigned>(kind)];
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
unsigned setLimit(Kind kind)
{
    switch (kind) {
    case Kind::ITCPlateRegion: return 20;
    case Kind::SizeFilter: return 4;
    case Kind::PupilDistance: return 2;
    case Kind::BinoCali:
    case Kind::LfCali: return 1;
    default: return 10;
    }
}

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

struct Tracked {
    VcaObject* obj = nullptr;
    Kind kind = Kind::VcaRule;
    int hostRefs = 0;
    char label[17] = {};
    bool pdcLineMode = false;
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
        FUZZ_CHECK(r->GetVcaObject(static_cast<int>(slots.size())) == nullptr,
                   "no slot past the last");
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
    Snapshot s;
    std::vector<tagTAVRIN_POINT> buffer(capacity(t.kind));
    unsigned count = 0;
    s.ok = withTyped(t.kind, t.obj, [&](auto* o) { return o->GetPoints(buffer.data(), &count); });
    FUZZ_CHECK(s.ok, "GetPoints with valid buffers succeeds");
    FUZZ_CHECK(count <= capacity(t.kind), "GetPoints reports no more than the class holds");
    s.count = count;
    std::copy(buffer.begin(), buffer.begin() + count, s.points);
    return s;
}

// How many reported vertices belong to the figure itself: an ITCLine reports the count
// of its last SetPoints, of which only the first two live in its line.
unsigned figureVertices(const Tracked& t)
{
    return t.kind == Kind::ITCLine ? 2u : 20u;
}

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
    void* context = in.flag() ? nullptr : reinterpret_cast<void*>(&in);
    sink::beginDraw();
    t.obj->Draw(context, w, h, in.flag());
    sink::expectRestored(nameOf(t.kind));
}

void labelOp(Tracked& t, FuzzInput& in)
{
    if (in.flag()) {
        const unsigned length = in.pick(3) == 0 ? in.u32() : in.byte() % 40;
        const unsigned bytes = length < 64 ? length : 64;
        std::vector<char> raw(bytes == 0 ? 1 : bytes);
        for (char& c : raw) {
            c = static_cast<char>(in.byte());
        }
        char* text = in.pick(8) == 0 ? nullptr : raw.data();
        const bool ok = t.obj->SetLabelText(text, length);
        FUZZ_CHECK(ok == (text != nullptr && length != 0), "SetLabelText result");
        if (ok) {
            std::memset(t.label, 0, sizeof t.label);
            std::memcpy(t.label, text, length < 16 ? length : 16);
        }
        return;
    }
    const unsigned size = in.byte() % 24;
    std::vector<char> buffer(size == 0 ? 1 : size, '\x55');
    char* out = in.pick(8) == 0 ? nullptr : buffer.data();
    const bool ok = t.obj->GetLabelText(out, size);
    FUZZ_CHECK(ok == (out != nullptr && size != 0), "GetLabelText result");
    if (ok) {
        std::vector<char> expected(size, '\0');
        const std::size_t length = std::strlen(t.label);
        std::memcpy(expected.data(), t.label, length < size ? length : size);
        FUZZ_CHECK(std::memcmp(expected.data(), out, size) == 0, "GetLabelText bytes");
    }
}

// SetPoints: a refusal changes nothing; an acceptance is read back as given.
void setPointsOp(Tracked& t, FuzzInput& in, const Snapshot& before)
{
    const unsigned count = in.count();
    std::vector<tagTAVRIN_POINT> buffer = pointArray(in, count, 2);
    tagTAVRIN_POINT* points = in.pick(16) == 0 ? nullptr : buffer.data();
    const bool ok = withTyped(t.kind, t.obj, [&](auto* o) { return o->SetPoints(points, count); });
    const Snapshot after = snapshot(t);
    if (points == nullptr || count > setLimit(t.kind)) {
        FUZZ_CHECK(!ok, "SetPoints refuses a null array or too many vertices");
    }
    if (!ok) {
        // An ITCLine keeps the refused vertices in its stored copy, deliberately.
        if (t.kind != Kind::ITCLine) {
            FUZZ_CHECK(sameVertices(before, after), "a refused SetPoints leaves GetPoints unchanged");
        }
        return;
    }
    for (unsigned i = 0; i < count; ++i) {
        FUZZ_CHECK(finitePoint(points[i]), "SetPoints accepts only finite vertices");
    }
    const bool lineFigure = t.kind == Kind::BehaviorCali || t.kind == Kind::BehaviorCheck ||
                            (t.kind == Kind::PdcRule && t.pdcLineMode) ||
                            (t.kind == Kind::VcaRule &&
                             static_cast<VcaRule*>(t.obj)->GetRuleType() == TAVRIN_RULE_LINE);
    if (lineFigure) {
        // A line always takes two vertices; the rules that copy first pad with zeros.
        const bool padded = t.kind != Kind::PdcRule;
        FUZZ_CHECK(after.count == 2, "a line reads back two vertices");
        for (unsigned i = 0; i < 2; ++i) {
            const tagTAVRIN_POINT expected =
                (padded && i >= count) ? tagTAVRIN_POINT{0.0f, 0.0f} : points[i];
            FUZZ_CHECK(std::memcmp(&expected, &after.points[i], sizeof expected) == 0,
                       "a line reads back the vertices it was given");
        }
        return;
    }
    const unsigned expectedCount =
        (t.kind == Kind::BinoCali || t.kind == Kind::LfCali) ? 1u : count;
    FUZZ_CHECK(after.count == expectedCount, "GetPoints reports the count set");
    FUZZ_CHECK(std::memcmp(after.points, points, expectedCount * sizeof(tagTAVRIN_POINT)) == 0,
               "GetPoints reads back the vertices set");
}

void getPointsOp(Tracked& t, FuzzInput& in)
{
    std::vector<tagTAVRIN_POINT> buffer(capacity(t.kind));
    unsigned count = 0;
    tagTAVRIN_POINT* points = in.pick(4) == 0 ? nullptr : buffer.data();
    unsigned* countOut = in.pick(4) == 0 ? nullptr : &count;
    const bool ok =
        withTyped(t.kind, t.obj, [&](auto* o) { return o->GetPoints(points, countOut); });
    FUZZ_CHECK(ok == (points != nullptr && countOut != nullptr), "GetPoints result");
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
    const unsigned live = figureVertices(t);
    const bool squareDrag = !whole && t.kind == Kind::SizeFilter && t.sizeFilterType != 0;
    // A square's corner is placed from the cursor alone; every other drag needs a finite
    // vector.
    const bool refusedInput = squareDrag ? !finitePoint(to) : !finiteDrag(from, to);
    if (refusedInput) {
        FUZZ_CHECK(sameVertices(before, after), "a drag that is not finite changes nothing");
    }
    if (!whole && (t.kind == Kind::BinoCali || t.kind == Kind::LfCali)) {
        FUZZ_CHECK(sameVertices(before, after), "a single-point figure has no vertex drag");
    }
    if (whole) {
        const float dx = to.x - from.x;
        const float dy = to.y - from.y;
        FUZZ_CHECK(sameVertices(before, after, live) || shiftedBy(before, after, dx, dy, live),
                   "a whole drag moves every vertex by the drag or none");
    }
    if (!whole && t.kind != Kind::SizeFilter && t.kind != Kind::AtmCali) {
        FUZZ_CHECK(movedSelectedVertexOnly(before, after, selected, to.x - from.x, to.y - from.y, live),
                   "a vertex drag moves the selected vertex alone, by the drag, or nothing");
    }
    const bool staysInside = whole || vertexDragStaysInside(t, before);
    if (staysInside && allInPicture(before, live)) {
        FUZZ_CHECK(allInPicture(after, live), "an accepted drag keeps every vertex in the picture");
    }
}

void statusOps(Tracked& t, FuzzInput& in)
{
    switch (in.pick(6)) {
    case 0: {
        const auto s = static_cast<tagTAVRIN_OBJ_STATUS>(in.enumValue());
        t.obj->SetObjStatus(s);
        FUZZ_CHECK(t.obj->GetObjStatus() == s, "GetObjStatus returns the status set");
        break;
    }
    case 1: {
        const unsigned index = in.index();
        t.obj->SetSelPointIndex(index);
        FUZZ_CHECK(t.obj->GetSelPointIndex() == index, "GetSelPointIndex returns the index set");
        break;
    }
    case 2: {
        const bool closed = in.flag();
        t.obj->SetClosed(closed);
        FUZZ_CHECK(t.obj->GetClosed() == closed, "GetClosed returns the flag set");
        break;
    }
    case 3:
        t.obj->SetWndSize(in.viewSize(), in.viewSize());
        break;
    case 4:
        t.obj->SetIsTraversePlane(in.flag());
        break;
    default: {
        tagTAVRIN_POINT anchor = in.point();
        tagTAVRIN_VCA_RECT rect{};
        t.obj->GetDrawLabelRect(anchor, rect);
        break;
    }
    }
}

// The people-counting and size-filter operations of the base, on every class.
void baseOps(Tracked& t, FuzzInput& in)
{
    switch (in.pick(8)) {
    case 0: {
        const bool lineMode = in.flag();
        t.obj->SetVcaPDCLineOrRect(lineMode);
        if (t.kind == Kind::PdcRule) {
            t.pdcLineMode = lineMode;
        }
        break;
    }
    case 1:
        t.obj->SetVcaPDCLineCali(in.flag());
        break;
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
        break;
    }
    case 4: {
        tagTAVRIN_POINT from = in.point();
        tagTAVRIN_POINT to = in.near(from);
        t.obj->MoveCaliPoints(from, to);
        break;
    }
    case 5: {
        tagTAVRIN_POINT p = in.point();
        t.obj->CheckCaliPointSelected(p);
        break;
    }
    default: {
        const unsigned type = in.enumValue();
        t.obj->SetSizeFilterType(static_cast<tagTAVRIN_SIZE_FILTER_TYPE>(type));
        if (t.kind == Kind::SizeFilter) {
            t.sizeFilterType = type;
            FUZZ_CHECK(static_cast<unsigned>(static_cast<SizeFilter*>(t.obj)->GetSizeFilterType()) == type,
                       "GetSizeFilterType returns the type set");
        }
        break;
    }
    }
}

void checkHead(const tagTAVRIN_POINT out[2], const tagTAVRIN_POINT& end)
{
    // A head is either computed in full or not written: never half a bar, never NaN
    // from finite input.
    if (finitePoint(end)) {
        FUZZ_CHECK(finitePoint(out[0]) == finitePoint(out[1]), "a line head is written whole");
    }
}

template <class T>
void lineHeadOp(FuzzInput& in, T* obj, void (T::*head)(tagTAVRIN_POINT&, tagTAVRIN_POINT*))
{
    tagTAVRIN_POINT end = in.point();
    std::vector<tagTAVRIN_POINT> out(2, tagTAVRIN_POINT{std::nanf(""), std::nanf("")});
    (obj->*head)(end, in.pick(8) == 0 ? nullptr : out.data());
    checkHead(out.data(), end);
}

template <class T>
void arrowPointsOp(FuzzInput& in, T* obj, bool set)
{
    if (set) {
        tagTAVRIN_POINT a = in.point();
        tagTAVRIN_POINT b = in.near(a);
        obj->SetArrowPoints(a, b);
        return;
    }
    tagTAVRIN_POINT a{};
    tagTAVRIN_POINT b{};
    const bool nullA = in.pick(4) == 0;
    const bool nullB = in.pick(4) == 0;
    const bool ok = obj->GetArrowPoints(nullA ? nullptr : &a, nullB ? nullptr : &b);
    FUZZ_CHECK(ok == (!nullA && !nullB), "GetArrowPoints result");
}

void classOps(Tracked& t, FuzzInput& in)
{
    const unsigned op = in.byte();
    switch (t.kind) {
    case Kind::VcaRule: {
        auto* r = static_cast<VcaRule*>(t.obj);
        switch (op % 4) {
        case 0: r->SetColors(in.u32(), in.u32()); break;
        case 1: r->SetLineType(static_cast<tagTAVRIN_LINE_TYPE>(in.enumValue())); break;
        case 2: {
            const tagTAVRIN_RULE_TYPE old = r->GetRuleType();
            const auto type = static_cast<tagTAVRIN_RULE_TYPE>(in.enumValue());
            r->SetRuleType(type);
            FUZZ_CHECK(r->GetRuleType() == type || r->GetRuleType() == old,
                       "SetRuleType takes the new type or keeps the old one");
            break;
        }
        default: {
            const auto d = static_cast<TAVRIN_ARROW_TYPE>(in.enumValue());
            r->SetArrowDirection(d);
            FUZZ_CHECK(r->GetArrowDirection() == d, "GetArrowDirection returns the direction set");
            break;
        }
        }
        break;
    }
    case Kind::ITCLine: {
        auto* l = static_cast<ITCLine*>(t.obj);
        const auto type = static_cast<tagTAVRIN_ITC_LINE_TYPE>(in.enumValue());
        l->SetLineType(type);
        FUZZ_CHECK(l->GetLineType() == type, "GetLineType returns the type set");
        break;
    }
    case Kind::Lane:
    case Kind::PdcRule: {
        if (t.kind == Kind::Lane) {
            arrowPointsOp(in, static_cast<Lane*>(t.obj), op % 2 == 0);
            break;
        }
        if (op % 8 < 2) {
            arrowPointsOp(in, static_cast<PdcRule*>(t.obj), op % 2 == 0);
            break;
        }
        auto* p = static_cast<PdcRule*>(t.obj);
        switch (op % 8) {
        case 2: p->SetVcaPDCCaliShoulderLine(in.flag()); break;
        case 3: p->SetSelCaliPointIndex(in.index()); break;
        case 4: {
            std::vector<float> values(16);
            for (float& v : values) {
                v = in.pick(3) == 0 ? 0.0f : in.coord();
            }
            p->SetTargetWidthLine(in.pick(8) == 0 ? nullptr : values.data());
            break;
        }
        case 5: {
            const unsigned count = in.count();
            std::vector<tagTAVRIN_POINT> buffer = pointArray(in, count, 1);
            p->SetSinglePoints(in.pick(8) == 0 ? nullptr : buffer.data(), count);
            break;
        }
        case 6: {
            tagTAVRIN_POINT single{};
            unsigned count = 0;
            p->GetSinglePoints(in.pick(4) == 0 ? nullptr : &single, in.pick(4) == 0 ? nullptr : &count);
            break;
        }
        default: {
            std::vector<char> label = text(in);
            p->SetText(in.pick(8) == 0 ? nullptr : label.data());
            break;
        }
        }
        break;
    }
    case Kind::SizeFilter: {
        auto* f = static_cast<SizeFilter*>(t.obj);
        if (op % 2 == 0) {
            f->SetColor(static_cast<int>(in.enumValue()));
        } else {
            const Snapshot before = snapshot(t);
            tagTAVRIN_POINT a = in.point();
            tagTAVRIN_POINT b = in.near(a);
            const bool ok = f->SetDiagonal(a, b);
            FUZZ_CHECK(ok == (finitePoint(a) && finitePoint(b)), "SetDiagonal refuses only non-finite corners");
            const Snapshot after = snapshot(t);
            if (!ok) {
                FUZZ_CHECK(sameVertices(before, after), "a refused SetDiagonal changes nothing");
            } else {
                FUZZ_CHECK(after.count == 4, "a diagonal gives four corners");
            }
        }
        break;
    }
    case Kind::AtmCali: {
        auto* a = static_cast<AtmCali*>(t.obj);
        switch (op % 6) {
        case 0: {
            tagTAVRIN_POINT p = in.point();
            tagTAVRIN_POINT q = in.near(p);
            a->SetLinePoints(p, q);
            break;
        }
        case 1: {
            tagTAVRIN_POINT p{};
            tagTAVRIN_POINT q{};
            const bool nullP = in.pick(4) == 0;
            const bool nullQ = in.pick(4) == 0;
            const bool ok = a->GetLinePoints(nullP ? nullptr : &p, nullQ ? nullptr : &q);
            FUZZ_CHECK(ok == (!nullP && !nullQ), "GetLinePoints result");
            if (ok) {
                FUZZ_CHECK(finitePoint(p) && finitePoint(q), "the calibration line stays finite");
            }
            break;
        }
        case 2: {
            tagTAVRIN_POINT from = in.point();
            tagTAVRIN_POINT to = in.near(from);
            a->MoveLinePoint(from, to);
            break;
        }
        case 3: {
            tagTAVRIN_POINT p = in.point();
            FUZZ_CHECK(a->CheckLinePointSelected(p) <= 2, "CheckLinePointSelected names an end or none");
            break;
        }
        case 4: {
            const unsigned index = in.index();
            a->SetLineSelPointIndex(index);
            FUZZ_CHECK(a->GetLineSelPointIndex() == index, "GetLineSelPointIndex returns the index set");
            break;
        }
        default: lineHeadOp(in, a, &AtmCali::GetVCaliLineHead); break;
        }
        break;
    }
    case Kind::BehaviorCali:
    case Kind::BehaviorCheck: {
        auto* b = static_cast<BehaviorCali*>(t.obj);
        if (op % 2 == 0) {
            const auto type = static_cast<tagTAVRIN_BEHAV_CALI_TYPE>(in.enumValue());
            b->SetCaliType(type);
            FUZZ_CHECK(b->GetCaliType() == type, "GetCaliType returns the type set");
        } else {
            lineHeadOp(in, b, &BehaviorCali::GetVCaliLineHead);
        }
        break;
    }
    case Kind::ItsCali: {
        auto* c = static_cast<ItsCali*>(t.obj);
        switch (op % 3) {
        case 0:
        case 1: {
            std::vector<char> label = text(in);
            char* p = in.pick(8) == 0 ? nullptr : label.data();
            const unsigned length = in.pick(4) == 0 ? 0u : (in.pick(4) == 0 ? in.u32() : in.byte());
            const bool ok = op % 3 == 0 ? c->SetWidthLabelText(p, length) : c->SetHeightlabelText(p, length);
            FUZZ_CHECK(ok == (p != nullptr && length != 0), "label text setter result");
            break;
        }
        default: {
            const unsigned count = in.byte() % 24;
            std::vector<tagTAVRIN_POINT> points = pointArray(in, count, 1);
            tagTAVRIN_POINT* p = in.pick(8) == 0 ? nullptr : points.data();
            const unsigned top = c->GetMinYPoint(p, count);
            FUZZ_CHECK(top == 0 || top < count, "GetMinYPoint names a vertex or 0");
            break;
        }
        }
        break;
    }
    case Kind::PupilDistance:
        lineHeadOp(in, static_cast<PupilDistance*>(t.obj), &PupilDistance::GetPupilLine);
        break;
    case Kind::BinoCali: {
        auto* b = static_cast<BinoCali*>(t.obj);
        if (op % 2 == 0) {
            b->SetRadius(in.pick(4) == 0 ? in.u32() : in.byte());
        } else {
            b->Radius();
        }
        break;
    }
    default:
        break;
    }
}

// The points an object keeps besides its vertices, as the host reads them back.
bool auxiliaryFinite(const Tracked& t)
{
    tagTAVRIN_POINT p[2] = {};
    unsigned count = 0;
    switch (t.kind) {
    case Kind::Lane:
        static_cast<Lane*>(t.obj)->GetArrowPoints(&p[0], &p[1]);
        break;
    case Kind::PdcRule: {
        auto* r = static_cast<PdcRule*>(t.obj);
        tagTAVRIN_POINT single{};
        r->GetSinglePoints(&single, &count);
        if (!finitePoint(single)) {
            return false;
        }
        r->GetPDCCaliPoint(p, &count);
        if (!finitePoint(p[0]) || !finitePoint(p[1])) {
            return false;
        }
        r->GetArrowPoints(&p[0], &p[1]);
        break;
    }
    case Kind::AtmCali:
        static_cast<AtmCali*>(t.obj)->GetLinePoints(&p[0], &p[1]);
        break;
    default:
        break;
    }
    return finitePoint(p[0]) && finitePoint(p[1]);
}

void objectOp(Tracked& t, FuzzInput& in)
{
    const Snapshot before = snapshot(t);
    FUZZ_CHECK(allFinite(before), "GetPoints reports finite vertices");
    bool mayChange = true;
    switch (in.pick(14)) {
    case 0:
    case 1:
        setPointsOp(t, in, before);
        break;
    case 2:
        getPointsOp(t, in);
        mayChange = false;
        break;
    case 3:
        moveOp(t, in, before, true);
        break;
    case 4:
    case 5:
        moveOp(t, in, before, false);
        break;
    case 6: {
        tagTAVRIN_POINT p = in.point();
        t.obj->CheckSelected(p);
        t.obj->IsNull();
        mayChange = false;
        break;
    }
    case 7: {
        tagTAVRIN_POINT p = in.point();
        const unsigned hit = t.obj->CheckPointSelected(p);
        if (t.kind == Kind::BinoCali || t.kind == Kind::LfCali) {
            FUZZ_CHECK(hit == 0, "a single-point figure has no vertex to hit");
        }
        FUZZ_CHECK(hit <= std::max(before.count, 2u), "CheckPointSelected names a vertex or none");
        mayChange = false;
        break;
    }
    case 8:
    case 9:
        checkDraw(t, in);
        // An ITCLine takes its line's count on every draw, deliberately.
        mayChange = t.kind == Kind::ITCLine;
        break;
    case 10:
        labelOp(t, in);
        mayChange = false;
        break;
    case 11:
        statusOps(t, in);
        mayChange = false;
        break;
    case 12:
        baseOps(t, in);
        break;
    default:
        classOps(t, in);
        break;
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
}

}  // namespace fuzz
