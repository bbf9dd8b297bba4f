#ifndef TAVRIN_TAVRINTYPES_H
#define TAVRIN_TAVRINTYPES_H

// Records and enumerations that cross Tavrin's public interface.
//
// Every coordinate is a normalised picture coordinate: 32-bit floats where 0.0 is the
// left (x) or top (y) edge of the picture and 1.0 the right or bottom edge. The records
// are plain C-layout structs at global scope, so they are usable unqualified
// (`tagTAVRIN_POINT`) from any namespace. Enumerations are unscoped with a fixed 32-bit
// underlying type: any 32-bit value may be stored in them, and values outside a table
// draw like that table's default.

#include <stdint.h>

#if defined(_WIN32)
#  define TAVRIN_API_EXPORT __declspec(dllexport)
#  define TAVRIN_API_IMPORT __declspec(dllimport)
#else
#  define TAVRIN_API_EXPORT __attribute__((visibility("default")))
#  define TAVRIN_API_IMPORT __attribute__((visibility("default")))
#endif

/// Marks the classes and functions that the shared library exports.
#if defined(TAVRIN_BUILDING_LIBRARY)
#  define TAVRIN_API TAVRIN_API_EXPORT
#else
#  define TAVRIN_API TAVRIN_API_IMPORT
#endif

/// One vertex, normalised, origin at the top-left of the picture, y downwards.
struct tagTAVRIN_POINT {
    float x;
    float y;
};

/// An axis-aligned rectangle in normalised units: anchor corner and extent (label boxes).
struct tagTAVRIN_VCA_RECT {
    float x;
    float y;
    float width;
    float height;
};

/// One segment (the drawn calibration line of a people-counting line).
struct tagTAVRIN_LINE {
    tagTAVRIN_POINT start;
    tagTAVRIN_POINT end;
};

/// One triangle produced by polygon triangulation.
struct tagTAVRIN_TRIANGLE_ {
    tagTAVRIN_POINT points[3];
};

/// A polygon held by value; only the first `count` entries are meaningful.
struct tagTAVRIN_POLYGON {
    int32_t count;
    tagTAVRIN_POINT points[20];
};

/// Look and edit state of a primitive or analytics object. Other values draw like 0.
enum tagTAVRIN_OBJ_STATUS : int32_t {
    TAVRIN_OBJ_STATUS_NORMAL = 0,       ///< first colour, no vertex handles
    TAVRIN_OBJ_STATUS_SELECTED = 1,     ///< second colour, vertex handles
    TAVRIN_OBJ_STATUS_HIGHLIGHTED = 2   ///< second colour, no vertex handles
};

/// How a `Line` is drawn. Any value other than 1 draws a plain segment.
enum tagTAVRIN_LINE_TYPE : int32_t {
    TAVRIN_LINE_PLAIN = 0,
    TAVRIN_LINE_ARROW = 1
};

/// Crossing direction of a `Line`, `Arrow` or `BrokenLine`. Values above 3 behave as 3.
enum TAVRIN_ARROW_TYPE : int32_t {
    TAVRIN_ARROW_BOTH = 0,
    TAVRIN_ARROW_POSITIVE = 1,
    TAVRIN_ARROW_NEGATIVE = 2,
    TAVRIN_ARROW_NONE = 3
};

/// Which figure a `VcaRule` edits. Any value other than 1 and 2 is a region.
enum tagTAVRIN_RULE_TYPE : int32_t {
    TAVRIN_RULE_REGION = 0,
    TAVRIN_RULE_LINE = 1,
    TAVRIN_RULE_BROKEN_LINE = 2
};

/// Marker of a `Point`. Any non-zero value draws the cross.
enum tagTAVRIN_POINT_TYPE : int32_t {
    TAVRIN_POINT_DOT = 0,
    TAVRIN_POINT_CROSS = 1
};

/// Shape of a `SizeFilter`. Any non-zero value selects the square.
enum tagTAVRIN_SIZE_FILTER_TYPE : int32_t {
    TAVRIN_SIZE_FILTER_RECT = 0,
    TAVRIN_SIZE_FILTER_SQUARE = 1
};

/// Kind of an `ITCLine`. Only value 1 is distinguished.
enum tagTAVRIN_ITC_LINE_TYPE : int32_t {
    TAVRIN_ITC_LINE_DEFAULT = 0,
    TAVRIN_ITC_LINE_GREEN = 1
};

/// Kind of a `BehaviorCali` calibration line. Only value 1 is distinguished.
enum tagTAVRIN_BEHAV_CALI_TYPE : int32_t {
    TAVRIN_BEHAV_CALI_LINE = 0,
    TAVRIN_BEHAV_CALI_VERTICAL = 1
};

#endif  // TAVRIN_TAVRINTYPES_H
