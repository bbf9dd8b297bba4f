// The editing toolkit: vertex limits, inserting and removing vertices, the edge under the
// cursor, nudging, coordinate spaces, self-crossings, scene hints and track crossings.

#include "support/GlTest.h"

#include <Tavrin/Coordinates.h>
#include <Tavrin/Crossings.h>
#include <Tavrin/Diagnostics.h>
#include <Tavrin/Editing.h>
#include <Tavrin/Tavrin.h>

#include <functional>

using namespace Tavrin;

namespace {

using Points = std::vector<tagTAVRIN_POINT>;

template <class T>
Owned<T> with(Points p)
{
    Owned<T> f(T::NewInstance());
    EXPECT_TRUE(f->SetPoints(p.data(), static_cast<unsigned int>(p.size())));
    return f;
}

Points pointsOf(VcaObject& o)
{
    tagTAVRIN_POINT buffer[20] = {};
    unsigned int count = 0;
    auto read = [&](auto* typed) { typed->GetPoints(buffer, &count); };
    if (auto* r = dynamic_cast<ShieldRegion*>(&o)) read(r);
    if (auto* r = dynamic_cast<VcaRule*>(&o)) read(r);
    if (auto* r = dynamic_cast<SizeFilter*>(&o)) read(r);
    return Points(buffer, buffer + count);
}

bool same(const Points& a, const Points& b)
{
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](auto p, auto q) {
               return p.x == q.x && p.y == q.y;
           });
}

VcaRule* ruleOfType(tagTAVRIN_RULE_TYPE type, Points p)
{
    VcaRule* r = VcaRule::NewInstance();
    r->SetRuleType(type);
    r->SetPoints(p.data(), static_cast<unsigned int>(p.size()));
    return r;
}

const Points kSquare = {pt(0.2f, 0.2f), pt(0.6f, 0.2f), pt(0.6f, 0.6f), pt(0.2f, 0.6f)};
const Points kBowTie = {pt(0.2f, 0.2f), pt(0.6f, 0.6f), pt(0.6f, 0.2f), pt(0.2f, 0.6f)};

}  // namespace

TEST(Editing, VertexLimitsFollowTheKindAndItsMode)
{
    struct Row {
        const char* name;
        std::function<VcaObject*()> make;
        VertexLimits limits;
    } rows[] = {
        {"null", [] { return nullptr; }, {0, 0, false}},
        {"VcaRule line", [] { return ruleOfType(TAVRIN_RULE_LINE, {}); }, {2, 2, false}},
        {"VcaRule broken", [] { return ruleOfType(TAVRIN_RULE_BROKEN_LINE, {}); }, {2, 10, false}},
        {"VcaRule region", [] { return ruleOfType(TAVRIN_RULE_REGION, {}); }, {3, 10, true}},
        {"ITCPlateRegion", [] { return ITCPlateRegion::NewInstance(); }, {3, 20, true}},
        {"ShieldRegion open", [] { auto* r = ShieldRegion::NewInstance(); r->SetClosed(false); return r; },
         {3, 10, false}},
        {"PdcRule line", [] { auto* r = PdcRule::NewInstance(); r->SetVcaPDCLineOrRect(true); return r; },
         {2, 2, false}},
        {"PdcRule area", [] { return PdcRule::NewInstance(); }, {3, 10, true}},
        {"SizeFilter", [] { return SizeFilter::NewInstance(); }, {4, 4, true}},
        {"BehaviorCheck", [] { return BehaviorCheck::NewInstance(); }, {2, 2, false}},
        {"BinoCali", [] { return BinoCali::NewInstance(); }, {1, 1, false}},
    };
    for (const Row& row : rows) {
        VcaObject* o = row.make();
        const VertexLimits l = GetVertexLimits(o);
        EXPECT_EQ(l.minCount, row.limits.minCount) << row.name;
        EXPECT_EQ(l.maxCount, row.limits.maxCount) << row.name;
        EXPECT_EQ(l.closed, row.limits.closed) << row.name;
        if (o != nullptr) {
            o->ReleaseRef();
        }
    }
}

TEST(Editing, InsertAndRemoveKeepTheSelectionOnItsVertex)
{
    Owned<ShieldRegion> r = with<ShieldRegion>(kSquare);
    r->SetSelPointIndex(3);  // (0.6, 0.6)
    ASSERT_TRUE(InsertVertex(r.get(), 1, pt(0.4f, 0.1f)));  // on edge 0
    EXPECT_TRUE(same(pointsOf(*r), {kSquare[0], pt(0.4f, 0.1f), kSquare[1], kSquare[2], kSquare[3]}));
    EXPECT_EQ(r->GetSelPointIndex(), 4u);
    ASSERT_TRUE(InsertVertex(r.get(), 5, pt(0.1f, 0.4f)));  // after the last: on the closing edge
    EXPECT_EQ(r->GetSelPointIndex(), 4u);
    ASSERT_TRUE(RemoveVertex(r.get(), 0));
    EXPECT_EQ(r->GetSelPointIndex(), 3u);
    ASSERT_TRUE(RemoveVertex(r.get(), 2));  // the selected one
    EXPECT_EQ(r->GetSelPointIndex(), 0u);
    EXPECT_TRUE(same(pointsOf(*r), {pt(0.4f, 0.1f), kSquare[1], kSquare[3], pt(0.1f, 0.4f)}));
}

TEST(Editing, VertexRefusalsLeaveTheFigureAsItWas)
{
    Owned<ShieldRegion> r = with<ShieldRegion>({kSquare[0], kSquare[1], kSquare[2]});
    Owned<SizeFilter> filter = with<SizeFilter>(kSquare);
    const Points ten(10, pt(0.5f, 0.5f));
    Owned<ShieldRegion> full = with<ShieldRegion>(ten);
    const struct {
        const char* what;
        std::function<bool()> call;
    } refusals[] = {
        {"below the minimum", [&] { return RemoveVertex(r.get(), 0); }},
        {"index past the count", [&] { return InsertVertex(r.get(), 4, pt(0.5f, 0.5f)); }},
        {"remove past the last", [&] { return RemoveVertex(r.get(), 3); }},
        {"outside the picture", [&] { return InsertVertex(r.get(), 1, pt(1.0001f, 0.5f)); }},
        {"not finite", [&] { return InsertVertex(r.get(), 1, pt(kNaN, 0.5f)); }},
        {"at the maximum", [&] { return InsertVertex(full.get(), 0, pt(0.1f, 0.1f)); }},
        {"fixed count", [&] { return InsertVertex(filter.get(), 0, pt(0.1f, 0.1f)); }},
        {"fixed count remove", [&] { return RemoveVertex(filter.get(), 0); }},
        {"null", [&] { return InsertVertex(nullptr, 0, pt(0.1f, 0.1f)) || RemoveVertex(nullptr, 0); }},
    };
    for (const auto& refusal : refusals) {
        EXPECT_FALSE(refusal.call()) << refusal.what;
    }
    EXPECT_TRUE(same(pointsOf(*r), {kSquare[0], kSquare[1], kSquare[2]}));
    EXPECT_TRUE(same(pointsOf(*filter), kSquare));
    EXPECT_EQ(pointsOf(*full).size(), 10u);
    EXPECT_TRUE(InsertVertex(r.get(), 3, pt(1.0f, 0.0f)));  // the picture's corners are inside
    EXPECT_TRUE(InsertVertex(r.get(), 0, pt(0.0f, 1.0f)));
    r->SetSelPointIndex(5);
    EXPECT_TRUE(RemoveVertex(r.get(), 0));
    EXPECT_EQ(r->GetSelPointIndex(), 4u);  // the last vertex stays selected
}

TEST(Editing, HitEdgeMeasuresInPixelsAlongTheClosingEdgeToo)
{
    Owned<ShieldRegion> r = with<ShieldRegion>(kSquare);
    const struct {
        tagTAVRIN_POINT cursor;
        float tolerance;
        bool hit;
        unsigned int edge;
        tagTAVRIN_POINT foot;
        float distance;
    } rows[] = {
        {pt(0.4f, 0.21f), 5.0f, true, 0, pt(0.4f, 0.2f), 2.0f},       // 0.01 of 200 px
        {pt(0.605f, 0.4f), 4.0f, true, 1, pt(0.6f, 0.4f), 2.0f},      // 0.005 of 400 px
        {pt(0.4f, 0.21f), 2.0f, true, 0, pt(0.4f, 0.2f), 2.0f},       // exactly at the tolerance
        {pt(0.4f, 0.21f), 1.9f, false, 0, pt(0.0f, 0.0f), 0.0f},
        {pt(0.19f, 0.4f), 5.0f, true, 3, pt(0.2f, 0.4f), 4.0f},       // the closing edge
        {pt(0.1f, 0.1f), 50.0f, true, 0, pt(0.2f, 0.2f), 0.0f},       // nearest end of the first of two
    };
    for (const auto& row : rows) {
        const EdgeHit h = HitEdge(r.get(), row.cursor, 400, 200, row.tolerance);
        EXPECT_EQ(h.hit, row.hit) << row.cursor.x << "," << row.cursor.y;
        if (h.hit && row.hit && row.distance > 0.0f) {
            EXPECT_EQ(h.edge, row.edge);
            EXPECT_POINT_NEAR(h.foot, row.foot.x, row.foot.y, 1e-6);
            EXPECT_NEAR(h.distance, row.distance, 1e-3);
        }
    }
    EXPECT_FALSE(HitEdge(r.get(), pt(0.4f, 0.2f), 0, 200, 5.0f).hit);
    EXPECT_FALSE(HitEdge(r.get(), pt(0.4f, 0.2f), 400, 0, 5.0f).hit);
    EXPECT_TRUE(HitEdge(r.get(), pt(0.4f, 0.2025f), 400, 200, 0.5f).hit);  // half a pixel off
    Owned<VcaRule> wire(ruleOfType(TAVRIN_RULE_LINE, {pt(0.2f, 0.2f), pt(0.6f, 0.2f)}));
    EXPECT_EQ(HitEdge(wire.get(), pt(0.4f, 0.21f), 400, 200, 5.0f).edge, 0u);
    EXPECT_TRUE(HitEdge(wire.get(), pt(0.4f, 0.21f), 400, 200, 5.0f).hit);
    EXPECT_FALSE(HitEdge(r.get(), pt(kNaN, 0.2f), 400, 200, 5.0f).hit);
    EXPECT_FALSE(HitEdge(r.get(), pt(0.4f, 0.2f), 400, 200, kNaN).hit);
    r->SetClosed(false);
    EXPECT_FALSE(HitEdge(r.get(), pt(0.19f, 0.4f), 400, 200, 5.0f).hit);
}

TEST(Editing, NudgeMovesByPixelsWithTheFiguresOwnRule)
{
    Owned<ShieldRegion> r = with<ShieldRegion>(kSquare);
    ASSERT_TRUE(Nudge(r.get(), 10.0f, -5.0f, 100, 50));
    const Points moved = pointsOf(*r);
    EXPECT_EQ(moved[0].x, 0.2f + 0.1f);
    EXPECT_EQ(moved[0].y, 0.2f - 0.1f);
    EXPECT_FALSE(Nudge(r.get(), 0.0f, -20.0f, 100, 50));  // would leave the picture
    EXPECT_FALSE(Nudge(r.get(), kInf, 0.0f, 100, 50));
    EXPECT_FALSE(Nudge(r.get(), 1.0f, 0.0f, 0, 50));
    EXPECT_FALSE(Nudge(r.get(), 1.0f, 0.0f, 100, 0));
    EXPECT_TRUE(same(pointsOf(*r), moved));
}

TEST(Coordinates, ConvertsBetweenEverySpaceAndRefusesWhole)
{
    const tagTAVRIN_POINT in[3] = {pt(0.0f, 0.0f), pt(0.25f, 0.75f), pt(1.0f, 1.0f)};
    const struct {
        CoordinateSpace to;
        tagTAVRIN_POINT expected[3];
    } rows[] = {
        {CoordinateSpace::Onvif, {pt(-1.0f, 1.0f), pt(-0.5f, -0.5f), pt(1.0f, -1.0f)}},
        {CoordinateSpace::Pixels, {pt(0.0f, 0.0f), pt(160.0f, 360.0f), pt(640.0f, 480.0f)}},
        {CoordinateSpace::Percent, {pt(0.0f, 0.0f), pt(25.0f, 75.0f), pt(100.0f, 100.0f)}},
    };
    for (const auto& row : rows) {
        tagTAVRIN_POINT out[3];
        tagTAVRIN_POINT back[3];
        ASSERT_TRUE(ConvertPoints(in, 3, CoordinateSpace::Normalized, row.to, out, 640, 480));
        ASSERT_TRUE(ConvertPoints(out, 3, row.to, CoordinateSpace::Normalized, back, 640, 480));
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(out[i].x, row.expected[i].x);
            EXPECT_EQ(out[i].y, row.expected[i].y);
            EXPECT_EQ(back[i].x, in[i].x);
            EXPECT_EQ(back[i].y, in[i].y);
        }
    }
    tagTAVRIN_POINT out[2] = {pt(9.0f, 9.0f), pt(9.0f, 9.0f)};
    const tagTAVRIN_POINT bad[][2] = {{pt(0.5f, 0.5f), pt(1.0001f, 0.5f)}, {pt(0.5f, 0.5f), pt(kNaN, 0.5f)}};
    for (const auto& points : bad) {
        EXPECT_FALSE(ConvertPoints(points, 2, CoordinateSpace::Normalized, CoordinateSpace::Onvif, out));
    }
    const tagTAVRIN_POINT onvif[1] = {pt(-1.5f, 0.0f)};
    EXPECT_FALSE(ConvertPoints(onvif, 1, CoordinateSpace::Onvif, CoordinateSpace::Normalized, out));
    const tagTAVRIN_POINT percent[1] = {pt(50.0f, 150.0f)};
    EXPECT_FALSE(ConvertPoints(percent, 1, CoordinateSpace::Percent, CoordinateSpace::Normalized, out));
    EXPECT_FALSE(ConvertPoints(in, 1, CoordinateSpace::Normalized, CoordinateSpace::Pixels, out, 0, 480));
    const tagTAVRIN_POINT pixel[1] = {pt(641.0f, 0.0f)};
    EXPECT_FALSE(ConvertPoints(pixel, 1, CoordinateSpace::Pixels, CoordinateSpace::Normalized, out, 640, 480));
    EXPECT_FALSE(ConvertPoints(nullptr, 1, CoordinateSpace::Normalized, CoordinateSpace::Onvif, out));
    EXPECT_EQ(out[0].x, 9.0f);
    EXPECT_EQ(out[1].y, 9.0f);
}

// A closed outline has crossings exactly when its region draws it without a fill.
TEST_F(GlTest, SelfCrossingsAgreeWithTheFill)
{
    const struct {
        const char* name;
        Points points;
        std::vector<std::pair<unsigned int, unsigned int>> pairs;
    } rows[] = {
        {"square", kSquare, {}},
        {"bow tie", kBowTie, {{0, 2}}},
        {"closing edge", {pt(0.2f, 0.2f), pt(0.6f, 0.2f), pt(0.6f, 0.6f), pt(0.1f, 0.4f), pt(0.4f, 0.6f)}, {{2, 4}}},
        {"closing edge across e1", {pt(0.5f, 0.1f), pt(0.1f, 0.5f), pt(0.9f, 0.5f), pt(0.9f, 0.8f), pt(0.5f, 0.8f)},
         {{1, 4}}},
        {"two crossings", {pt(0.2f, 0.2f), pt(0.6f, 0.2f), pt(0.6f, 0.6f), pt(0.3f, 0.1f), pt(0.2f, 0.6f)},
         {{0, 2}, {0, 3}}},
    };
    for (const auto& row : rows) {
        const std::vector<SelfCrossing> found =
            FindSelfCrossings(row.points.data(), static_cast<unsigned int>(row.points.size()), true);
        std::vector<std::pair<unsigned int, unsigned int>> pairs;
        for (const SelfCrossing& c : found) {
            pairs.emplace_back(c.edgeA, c.edgeB);
        }
        EXPECT_EQ(pairs, row.pairs) << row.name;
        Owned<ShieldRegion> r = with<ShieldRegion>(row.points);
        const bool filled = !drawn(*r).batchesOf(GL_POLYGON).empty();
        EXPECT_EQ(filled, found.empty()) << row.name;
    }
    const std::vector<SelfCrossing> bow = FindSelfCrossings(kBowTie.data(), 4, true);
    EXPECT_POINT_NEAR(bow.at(0).point, 0.4f, 0.4f, 1e-6);
    EXPECT_TRUE(FindSelfCrossings(kBowTie.data(), 3, true).empty());
    EXPECT_TRUE(FindSelfCrossings(nullptr, 4, true).empty());
}

TEST_F(GlTest, DrawSelfCrossingsRedrawsTheEdgesAndMarksEachCrossing)
{
    Owned<ShieldRegion> r = with<ShieldRegion>(kBowTie);
    DrawSelfCrossings(r.get(), 200, 100);
    expectVertices(recorded().batches.at(0), {kBowTie[0], kBowTie[1]});  // edge 0, then edge 2
    EXPECT_EQ(recorded().sequence(),
              concat({enterCalls({"GL_LINE_SMOOTH"}),
                      {colourCall(0xff2020), "glLineWidth(3)", "glBegin(GL_LINES)", "glEnd()", "glBegin(GL_LINES)",
                       "glEnd()", "glBegin(GL_LINES)", "glEnd()"},
                      leaveCalls({"GL_LINE_SMOOTH"})}));
    expectVertices(recorded().batches[2], {pt(0.37f, 0.34f), pt(0.43f, 0.46f), pt(0.37f, 0.46f), pt(0.43f, 0.34f)});
    rec::gl().reset();
    DrawSelfCrossings(with<ShieldRegion>(kSquare).get(), 200, 100);
    DrawSelfCrossings(r.get(), 0, 100);
    EXPECT_TRUE(recorded().calls.empty());
}

TEST(Diagnostics, SceneHintsNameEachProblemOnce)
{
    VcaObjectContainer* registry = VcaObjectContainer::Instance();
    auto add = [registry](VcaObject* o) {
        const int slot = registry->AddVcaObject(o);
        o->ReleaseRef();
        return slot;
    };
    const int shield = add(with<ShieldRegion>(kSquare).release());
    const int wire = add(ruleOfType(TAVRIN_RULE_LINE, {pt(0.3f, 0.3f), pt(0.5f, 0.5f)}));
    const int crossed = add(with<EnterRegion>(kBowTie).release());
    const int flat = add(with<ReferenceRegion>({pt(0.1f, 0.1f), pt(0.3f, 0.1f), pt(0.5f, 0.1f)}).release());
    const int dot = add(ruleOfType(TAVRIN_RULE_LINE, {pt(0.7f, 0.7f), pt(0.7f, 0.7f)}));
    Owned<Lane> lane = with<Lane>({pt(0.7f, 0.7f), pt(1.5f, 0.7f), pt(0.9f, 0.9f)});
    const int outside = registry->AddVcaObject(lane.get());
    std::vector<std::tuple<int, int, SceneHintCode>> got;
    for (const SceneHint& h : GetSceneHints()) {
        got.emplace_back(h.slot, h.otherSlot, h.code);
        EXPECT_NE(h.message.find("slot " + std::to_string(h.slot)), std::string::npos) << h.message;
    }
    const std::vector<std::tuple<int, int, SceneHintCode>> expected = {
        {wire, shield, SceneHintCode::InsideShieldRegion},
        {crossed, -1, SceneHintCode::SelfCrossing},
        {flat, -1, SceneHintCode::ZeroArea},
        {dot, -1, SceneHintCode::ZeroLength},
        {outside, -1, SceneHintCode::OutsidePicture},
    };
    EXPECT_EQ(got, expected);
    EXPECT_EQ(GetOccupiedSlots(), (std::vector<int>{shield, wire, crossed, flat, dot, outside}));
    registry->DelVcaObject(wire);
    EXPECT_EQ(GetOccupiedSlots(), (std::vector<int>{shield, crossed, flat, dot, outside}));
    EXPECT_TRUE(same(GetVertices(lane.get()), {pt(0.7f, 0.7f), pt(1.5f, 0.7f), pt(0.9f, 0.9f)}));
    VcaObjectContainer::Release();
    EXPECT_TRUE(GetSceneHints().empty());
    EXPECT_TRUE(GetOccupiedSlots().empty());
    EXPECT_FALSE(VcaObjectContainer::Release()) << "reading the slots made a registry";
}

// Whatever the class: a line's two ends, a size filter's four corners, nothing for null.
TEST(Editing, GetVerticesReadsAnyClass)
{
    const Points line = {pt(0.3f, 0.3f), pt(0.5f, 0.5f)};
    Owned<VcaRule> rule(ruleOfType(TAVRIN_RULE_LINE, line));
    EXPECT_TRUE(same(GetVertices(rule.get()), line));
    Owned<SizeFilter> filter = with<SizeFilter>(kSquare);
    EXPECT_TRUE(same(GetVertices(filter.get()), kSquare));
    EXPECT_TRUE(GetVertices(nullptr).empty());
}

// The sides a track crosses are the sides the figure draws its marks on, in both looks (a
// horizontal traverse plane's marks too, though both sit beside its arrow): a track from
// the drawn "A" to the drawn "B" is one A-to-B crossing, counted as the arrow selects.
TEST_F(GlTest, TripwireSidesAreWhereTheMarksAreDrawn)
{
    const Points lines[] = {{pt(0.3f, 0.2f), pt(0.6f, 0.7f)}, {pt(0.6f, 0.7f), pt(0.3f, 0.2f)},
                            {pt(0.2f, 0.5f), pt(0.8f, 0.5f)}, {pt(0.8f, 0.5f), pt(0.2f, 0.5f)},
                            {pt(0.5f, 0.2f), pt(0.5f, 0.8f)}};
    const struct {
        TAVRIN_ARROW_TYPE direction;
        bool aToB;
        bool bToA;
    } arrows[] = {{TAVRIN_ARROW_BOTH, true, true},
                  {TAVRIN_ARROW_POSITIVE, true, false},
                  {TAVRIN_ARROW_NEGATIVE, false, true}};
    for (bool traverse : {false, true}) {
        for (const Points& line : lines) {
            for (const auto& arrow : arrows) {
                // The traverse-plane look is a broken line's: one segment of it here.
                Owned<VcaRule> rule(ruleOfType(traverse ? TAVRIN_RULE_BROKEN_LINE : TAVRIN_RULE_LINE, line));
                rule->SetArrowDirection(arrow.direction);
                rule->SetIsTraversePlane(traverse);
                rule->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
                if (traverse && arrow.direction == TAVRIN_ARROW_BOTH) {
                    continue;  // the traverse-plane look draws no marks for both directions
                }
                const auto& texts = drawn(*rule, 640, 480).texts;
                ASSERT_EQ(texts.size(), 2u);
                const tagTAVRIN_POINT track[2] = {texts[0].position, texts[1].position};
                const std::vector<CrossingEvent> events = TrackCrossings(rule.get(), track, 2);
                ASSERT_EQ(events.size(), 1u) << traverse << " " << line[0].x << " " << arrow.direction;
                EXPECT_EQ(events[0].kind, CrossingKind::AtoB);
                EXPECT_EQ(events[0].counts, arrow.aToB);
                const tagTAVRIN_POINT back[2] = {track[1], track[0]};
                EXPECT_EQ(TrackCrossings(rule.get(), back, 2).at(0).counts, arrow.bToA);
            }
        }
    }
}

TEST(Crossings, TracksAreReportedInOrderAcrossEverySegment)
{
    Owned<VcaRule> broken(ruleOfType(TAVRIN_RULE_BROKEN_LINE, {pt(0.1f, 0.5f), pt(0.5f, 0.5f), pt(0.9f, 0.5f)}));
    broken->SetArrowDirection(TAVRIN_ARROW_NONE);
    // Down exactly through the shared vertex, then back up across the second segment.
    const tagTAVRIN_POINT track[4] = {pt(0.25f, 0.375f), pt(0.75f, 0.625f), pt(0.625f, 0.375f), pt(0.625f, 0.4375f)};
    std::vector<CrossingEvent> events = TrackCrossings(broken.get(), track, 4);
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0].figureSegment, 1u);  // (0.5, 0.5) belongs to the segment it starts
    EXPECT_EQ(events[0].trackSegment, 0u);
    EXPECT_EQ(events[0].kind, CrossingKind::AtoB);  // down: from the left of the line to its right
    EXPECT_POINT_NEAR(events[0].point, 0.5f, 0.5f, 0.0);
    EXPECT_EQ(events[1].trackSegment, 1u);
    EXPECT_EQ(events[1].kind, CrossingKind::BtoA);
    EXPECT_FALSE(events[0].counts || events[1].counts);

    for (const Points& outline : {kSquare, Points(kSquare.rbegin(), kSquare.rend())}) {
        Owned<ShieldRegion> region = with<ShieldRegion>(outline);
        const tagTAVRIN_POINT through[2] = {pt(0.1f, 0.4f), pt(0.9f, 0.4f)};
        events = TrackCrossings(region.get(), through, 2);
        ASSERT_EQ(events.size(), 2u);
        EXPECT_EQ(events[0].kind, CrossingKind::Enter);
        EXPECT_EQ(events[1].kind, CrossingKind::Leave);
        EXPECT_POINT_NEAR(events[0].point, 0.2f, 0.4f, 1e-6);
        EXPECT_TRUE(events[0].counts);
    }
    Owned<ShieldRegion> triangle = with<ShieldRegion>({pt(0.2f, 0.2f), pt(0.6f, 0.2f), pt(0.2f, 0.6f)});
    const tagTAVRIN_POINT left[2] = {pt(0.1f, 0.3f), pt(0.3f, 0.3f)};  // across the closing edge
    EXPECT_EQ(TrackCrossings(triangle.get(), left, 2).at(0).figureSegment, 2u);
    Owned<SizeFilter> filter = with<SizeFilter>(kSquare);
    const tagTAVRIN_POINT bad[2] = {pt(0.1f, 0.4f), pt(kNaN, 0.4f)};
    EXPECT_TRUE(TrackCrossings(filter.get(), track, 4).empty());
    EXPECT_TRUE(TrackCrossings(broken.get(), bad, 2).empty());
    EXPECT_TRUE(TrackCrossings(broken.get(), track, 1).empty());
}

TEST(Crossings, PeopleCountingAndTrafficLinesCountByTheirArrow)
{
    Owned<PdcRule> pdc(PdcRule::NewInstance());
    pdc->SetVcaPDCLineOrRect(true);
    Points line = {pt(0.2f, 0.5f), pt(0.8f, 0.5f)};
    pdc->SetPoints(line.data(), 2);
    tagTAVRIN_POINT tail = pt(0.5f, 0.45f);
    tagTAVRIN_POINT tip = pt(0.5f, 0.55f);  // downwards: the right of the line seen from its start
    pdc->SetArrowPoints(tail, tip);
    Owned<ITCLine> itc = with<ITCLine>(line);
    const tagTAVRIN_POINT down[2] = {pt(0.5f, 0.4f), pt(0.5f, 0.6f)};
    const tagTAVRIN_POINT up[2] = {pt(0.5f, 0.6f), pt(0.5f, 0.4f)};
    EXPECT_TRUE(TrackCrossings(pdc.get(), down, 2).at(0).counts);
    EXPECT_FALSE(TrackCrossings(pdc.get(), up, 2).at(0).counts);
    EXPECT_EQ(TrackCrossings(itc.get(), down, 2).at(0).kind, CrossingKind::AtoB);
    EXPECT_TRUE(TrackCrossings(itc.get(), up, 2).at(0).counts);
    EXPECT_TRUE(TrackCrossings(itc.get(), down, 2).at(0).counts);
    tagTAVRIN_POINT along = pt(0.6f, 0.5f);
    tail = pt(0.4f, 0.5f);
    pdc->SetArrowPoints(tail, along);  // along the line: no direction counts
    EXPECT_FALSE(TrackCrossings(pdc.get(), down, 2).at(0).counts || TrackCrossings(pdc.get(), up, 2).at(0).counts);
}

TEST_F(GlTest, DrawTrackDrawsTheTrackAndAMarkerPerEvent)
{
    const tagTAVRIN_POINT track[3] = {pt(0.1f, 0.1f), pt(0.5f, 0.5f), pt(0.9f, 0.1f)};
    const std::vector<CrossingEvent> events = {{0, 0, pt(0.3f, 0.3f), CrossingKind::AtoB, true},
                                               {1, 0, pt(0.7f, 0.3f), CrossingKind::BtoA, false}};
    DrawTrack(track, 3, events, 100, 100);
    EXPECT_EQ(recorded().sequence(),
              concat({enterCalls({"GL_LINE_SMOOTH"}),
                      {colourCall(0xffb000), "glLineWidth(2)", "glBegin(GL_LINES)", "glEnd()", "glBegin(GL_LINES)",
                       "glEnd()", colourCall(0x20d040), "glBegin(GL_POLYGON)", "glEnd()", colourCall(0xa0a0a0),
                       "glBegin(GL_LINE_LOOP)", "glEnd()"},
                      leaveCalls({"GL_LINE_SMOOTH"})}));
    expectVertices(recorded().batches[2], {pt(0.25f, 0.25f), pt(0.35f, 0.25f), pt(0.35f, 0.35f), pt(0.25f, 0.35f)});
    rec::gl().reset();
    DrawTrack(track, 1, events, 100, 100);
    DrawTrack(track, 3, events, 100, 0);
    EXPECT_TRUE(recorded().calls.empty());
}
