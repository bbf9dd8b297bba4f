#ifndef TAVRIN_CROSSINGS_H
#define TAVRIN_CROSSINGS_H

// Trying a rule with a track: where a polyline drawn over the picture crosses a tripwire
// (and from which side) or enters and leaves a region, and whether the rule counts it.

#include <Tavrin/VcaObject.h>

#include <vector>

namespace Tavrin {

enum class CrossingKind {
    AtoB,   ///< a tripwire crossed from the side of its "A" mark to the side of its "B"
    BtoA,
    Enter,  ///< a region's outline crossed towards its inside
    Leave,
};

/// Track segment `trackSegment` (from point i to i + 1) crosses figure segment
/// `figureSegment` (edge e from vertex e to e + 1, the closing edge from the last vertex to
/// the first) at `point`. `counts`: whether the rule counts this crossing.
struct CrossingEvent {
    unsigned int trackSegment;
    unsigned int figureSegment;
    tagTAVRIN_POINT point;
    CrossingKind kind;
    bool counts;
};

/// Every crossing of the normalised polyline `track` (`count` points) with the rule's
/// segments, in track order (along each track segment, then by figure segment).
///
/// Tripwires — a VcaRule as a line or broken line, an ITCLine, a PdcRule in line mode:
/// side "A" of a segment is where the line's arrow-bar look draws its "A" mark, to the
/// left of the segment seen on screen from its first vertex towards its second; "B" to
/// the right. The traverse-plane look (a broken line's) places its marks on the same
/// sides; on a horizontal line both sit beside its drawn arrow, still one on each side.
/// A VcaRule counts both directions (TAVRIN_ARROW_BOTH), A to B (POSITIVE, its arrow
/// head points to "B"), B to A (NEGATIVE) or none (any other value); an ITCLine counts
/// both; a PdcRule counts the direction its arrow (tail to tip) points across the line,
/// none when its arrow runs along it.
///
/// Regions — the region rules, a VcaRule as a region, a Lane, a PdcRule in area mode:
/// Enter and Leave across each drawn edge (no closing edge for an open outline), inside
/// being the side the outline's turning encloses; every one counts. Nothing for a region
/// of zero area.
///
/// A track point exactly on a segment belongs to its "B" side (or the outline's inside),
/// and a crossing exactly at a vertex shared by two segments is reported once, on the
/// later segment. Empty for other kinds, a null track, fewer than 2 points or a
/// non-finite point.
TAVRIN_API std::vector<CrossingEvent> TrackCrossings(VcaObject* rule, const tagTAVRIN_POINT* track,
                                                     unsigned int count);

/// Draws the track and a marker per event over the picture, through the same output as
/// `Draw`: the track 2 px wide in amber (0xffb000), a filled 10 px square in green
/// (0x20d040) at each counted crossing and an outlined one in grey (0xa0a0a0) at each that
/// does not count. Nothing for a view without size or a track that is not drawable.
TAVRIN_API void DrawTrack(const tagTAVRIN_POINT* track, unsigned int count,
                          const std::vector<CrossingEvent>& events, int width, int height);

}  // namespace Tavrin

#endif  // TAVRIN_CROSSINGS_H
