/**
 * @file kavostdlib.h
 * @brief Computation library of a surveying total station: plain C interface.
 *
 * Valid as C11 and as C++17. This is the only header that a program needs.
 *
 * Rules that hold for every function
 * ----------------------------------
 * - Lengths are metres, areas square metres, in double precision.
 * - Angles are `IntAngle`: integers in 1/16 arc-second. Azimuths count from north towards east.
 *   Vertical angles are zenith angles: 0 is straight up, a quarter circle is level, a half circle
 *   straight down; a reading beyond half a circle was taken on face 2.
 * - "Right" and "left" are those of a map with north up, looking along the stated direction.
 * - Inputs come first, outputs last. Pointers are never null, unless a parameter says that it may
 *   be, and an output never overlaps an input or another output.
 * - The library keeps no pointer beyond the call and never frees what it is handed.
 * - A function that returns `int32_t` returns a status: #STATUS_OK, a positive count of solutions
 *   where it says so, or a negative code. Each function lists all statuses that it can return and
 *   what its outputs hold under each. "Untouched" means that not a byte is written.
 * - Outputs are written field by field; fields named `reserved` are neither read nor written.
 * - Numbers are not checked for being finite: what is not a number travels through the formulas,
 *   and a direction computed from it is #ANGLE_INVALID, never a plausible angle.
 * - Comparisons are exact unless a tolerance is stated. Results are bit-reproducible.
 * - Functions without state may be called from any thread at any time. Functions that store or
 *   read a base name it under "State"; a base is one per loaded library and is not locked.
 * - There are no exceptions, no log, no files, no environment.
 *
 * The instrument's settings (azimuth reference and the like) come from the host program that the
 * library was built for. In the library as shipped every correction is off, and azimuths count
 * from north.
 */
#ifndef KAVOSTDLIB_H
#define KAVOSTDLIB_H

#include <stdint.h>

#if defined(_WIN32) && defined(KAVO_BUILDING_LIBRARY)
#define KAVO_EXPORT __declspec(dllexport)
#elif defined(__GNUC__) && !defined(_WIN32)
#define KAVO_EXPORT __attribute__((visibility("default")))
#else
#define KAVO_EXPORT /**< Marks the functions that the library exports. */
#endif

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @name Angles
 * @{
 */

/** Angle in 1/16 arc-second (1/57600 degree), signed 32-bit. */
typedef int32_t IntAngle;

#define ANGLE_FULL_CIRCLE 20736000   /**< 360 degrees. */
#define ANGLE_HALF_CIRCLE 10368000   /**< 180 degrees. */
#define ANGLE_QUARTER_CIRCLE 5184000 /**< 90 degrees. */
#define ANGLE_450_DEGREES 25920000   /**< A zenith angle is 450 degrees less the elevation angle. */
#define ANGLE_INVALID 134217728      /**< Given out where no direction exists (2 to the 27th). */

/** @} */

/**
 * @name Numbers that stand for no number
 * @{
 */

/** Preset into numeric outputs that may get no finite value (2 to the 27th). */
#define VALUE_INVALID 134217728.0
/** Slope, grade or ratio without bound: a line of constant north, a grade over no distance. */
#define SLOPE_VERTICAL 134217728.0

/** @} */

/**
 * @name Status codes
 * A function may return only those that its own contract lists.
 * @{
 */

#define STATUS_OK 0                /**< Success; every output is written. */
#define ERR_REFUSED (-1)           /**< An argument out of range, or a figure with itself. */
#define ERR_NO_DIRECTION (-1200)   /**< Two defining points coincide: no direction, no distance. */
#define ERR_POINT_INVALID (-1201)  /**< A point lacks a position, or a height that is needed. */
#define ERR_NO_DISTANCE (-1204)    /**< No sight has a distance. */
#define ERR_INDETERMINATE (-1205)  /**< The geometry has no solution, or not just one. */
#define ERR_PARALLEL (-1206)       /**< The lines are parallel. */
#define ERR_SAME_DIRECTION (-1207) /**< Two readings are equal. */

/** @} */

/**
 * @name Points
 * @{
 */

#define COORD_HAS_NE 1   /**< Flag: `north` and `east` are valid. */
#define COORD_HAS_ELEV 2 /**< Flag: `elev` is valid. */

/** A point; 32 bytes, also the stride of arrays. */
typedef struct CoordPt {
  double north;   /**< North coordinate, metres. */
  double east;    /**< East coordinate, metres. */
  double elev;    /**< Elevation, metres; meaningful only with #COORD_HAS_ELEV. */
  uint16_t flags; /**< #COORD_HAS_NE, #COORD_HAS_ELEV; other bits are ignored, written as 0. */
  uint16_t reserved[3]; /**< Fills the record; never read or written. */
} CoordPt;

/** @} */

/**
 * @name Polar measurements and grades
 * @{
 */

/** Directions and distances of one sight; 32 bytes. */
typedef struct AngDistRec {
  IntAngle azimuth; /**< Direction from the station to the point, or #ANGLE_INVALID. */
  IntAngle zenith;  /**< Zenith angle of the sight, or #ANGLE_INVALID. */
  double slopeDist; /**< Slope distance, metres. */
  double horizDist; /**< Horizontal distance, metres. */
  double dElev;     /**< Height difference, point minus station, metres. */
} AngDistRec;

/** A grade in two notations; 16 bytes. */
typedef struct SlopeRec {
  double percent; /**< Height difference per horizontal distance, per cent; or #SLOPE_VERTICAL. */
  double ratio;   /**< Horizontal distance per unit of height; or #SLOPE_VERTICAL. */
} SlopeRec;

/**
 * @brief Inverse: direction and distances from a station to a point.
 *
 * @param[in] station  the station; needs #COORD_HAS_NE.
 * @param[in] point    the point; needs #COORD_HAS_NE.
 * @param[out] out     `azimuth` in [0, full circle); `zenith` in [0, half circle]; distances and
 *                     height difference in metres.
 *
 * @retval STATUS_OK          all five fields are written.
 * @retval ERR_NO_DIRECTION   the azimuth or the zenith angle does not exist: the points coincide
 *                            in plan, or a coordinate is not a number. All five fields are written
 *                            all the same, the missing angle as #ANGLE_INVALID.
 * @retval ERR_POINT_INVALID  a point lacks #COORD_HAS_NE; `out` is untouched.
 *
 * @par State
 * None.
 * @par Threads
 * Any.
 * @par Notes
 * azimuth = atan2(dEast, dNorth); zenith = 450 degrees minus the elevation angle
 * atan2(dElev, hypot(dEast, dNorth)), both rounded to the unit.
 * - The elevations enter `slopeDist` and `dElev` only when the station has #COORD_HAS_ELEV; the
 *   point's own elevation flag is not looked at. Without it `slopeDist` equals `horizDist` and
 *   `dElev` is 0.
 * - `zenith` always uses the `elev` fields, whatever the flags say: give both points an elevation,
 *   or the same number.
 */
KAVO_EXPORT int32_t KavoCogoCoordToAngDist(const CoordPt* station, const CoordPt* point,
                                           AngDistRec* out);

/**
 * @brief Forward: the point at a direction and distance from a station.
 *
 * @param[in] station  the station; needs #COORD_HAS_NE.
 * @param[in] polar    `azimuth`, `horizDist` (metres; a negative distance means the opposite
 *                     direction) and `dElev` (metres) are read; `zenith` and `slopeDist` are not.
 * @param[out] out     the point: flags 3 with `elev` = station elevation plus `dElev` when the
 *                     station has #COORD_HAS_ELEV, else flags 1 with `elev` 0.
 *
 * @retval STATUS_OK          `out` is written.
 * @retval ERR_POINT_INVALID  the station lacks #COORD_HAS_NE; `out` is untouched.
 *
 * @par State
 * None.
 * @par Threads
 * Any.
 * @par Notes
 * north = cos(azimuth) horizDist + station north; east = sin(azimuth) horizDist + station east.
 */
KAVO_EXPORT int32_t KavoCogoAngDistToCoord(const CoordPt* station, const AngDistRec* polar,
                                           CoordPt* out);

/**
 * @brief Grade of a slope from a horizontal distance and a height difference.
 *
 * @param[in] horizDist  horizontal distance, metres.
 * @param[in] dElev      height difference, metres; positive is uphill.
 * @param[out] out       `percent` = dElev / horizDist * 100, #SLOPE_VERTICAL for no distance;
 *                       `ratio` = horizDist / dElev, #SLOPE_VERTICAL for no height difference.
 *
 * @par State
 * None.
 * @par Threads
 * Any.
 */
KAVO_EXPORT void KavoCogoCalcSlopeByDist(double horizDist, double dElev, SlopeRec* out);

/** @} */

/**
 * @name Lines and intersections
 * Computed in plan; elevations are neither read nor produced: a point of intersection has `elev` 0
 * and flags 1. A point that was not found holds #VALUE_INVALID in `north` and `east`.
 *
 * Lines and circles are intersected through east = slope * north + intercept. With coordinates of
 * millions of metres that form loses digits: reduce national-grid coordinates by a constant.
 * @{
 */

#define LINE_MODE_DIRECTION 1  /**< Line through `p1` in `direction`; so is every value but 2. */
#define LINE_MODE_TWO_POINTS 2 /**< Line through `p1` and `p2`. */

/** A line by two points, or by a point and a direction; 72 bytes. */
typedef struct LineDef {
  CoordPt p1;         /**< First point; needs #COORD_HAS_NE. */
  CoordPt p2;         /**< Second point, needs #COORD_HAS_NE; only in #LINE_MODE_TWO_POINTS. */
  IntAngle direction; /**< Azimuth of the line; in every other mode. */
  uint16_t mode;      /**< #LINE_MODE_TWO_POINTS, or any other value for point and direction. */
  uint16_t reserved;  /**< Fills the record; never read or written. */
} LineDef;

/**
 * @brief Intersection of two lines.
 *
 * @param[in] line1  first line.
 * @param[in] line2  second line.
 * @param[out] out   the point of intersection, flags 1.
 *
 * @retval STATUS_OK          `out` is the intersection.
 * @retval ERR_NO_DIRECTION   a line by two points has them coincide.
 * @retval ERR_POINT_INVALID  a point that defines a line lacks #COORD_HAS_NE.
 * @retval ERR_PARALLEL       the slopes (east per north) differ by less than 1e-5.
 *
 * Whatever the refusal, `out` holds #VALUE_INVALID in `north` and `east`, 0 in `elev`, flags 1.
 * The first line is examined before the second.
 *
 * @par State
 * None.
 * @par Threads
 * Any.
 * @par Notes
 * The parallel test compares slopes, not angles: it is sharper for lines that run east and west.
 */
KAVO_EXPORT int32_t KavoCogoCalcCrossLine(const LineDef* line1, const LineDef* line2, CoordPt* out);

/**
 * @brief Intersections of a line and a circle.
 *
 * @param[in] line    the line.
 * @param[in] centre  centre of the circle; its flags are not looked at.
 * @param[in] radius  radius, metres; 0 is a circle.
 * @param[out] out    two points, flags 1, the one with the smaller north first. On a line of
 *                    constant north the one with the smaller east comes first.
 *
 * @retval 2                  two points.
 * @retval 1                  the line touches: both records hold the one point.
 * @retval 0                  no intersection: `north` and `east` hold #VALUE_INVALID; on a line of
 *                            constant north `north` holds the line's.
 * @retval ERR_REFUSED        the radius is negative; `out` is untouched.
 * @retval ERR_NO_DIRECTION   the line's two points coincide; both records hold #VALUE_INVALID.
 * @retval ERR_POINT_INVALID  a point of the line lacks #COORD_HAS_NE; both records hold
 *                            #VALUE_INVALID.
 *
 * @par State
 * None.
 * @par Threads
 * Any.
 */
KAVO_EXPORT int32_t KavoCogoCalcCrossLineCircle(const LineDef* line, const CoordPt* centre,
                                                double radius, CoordPt out[2]);

/**
 * @brief Intersections of two circles.
 *
 * @param[in] centre1  first centre; its flags are not looked at.
 * @param[in] radius1  first radius, metres, greater than 0.
 * @param[in] centre2  second centre; its flags are not looked at.
 * @param[in] radius2  second radius, metres, greater than 0.
 * @param[out] out     two points, flags 1: first the one to the right of the direction from the
 *                     first centre to the second, then the one to its left.
 *
 * @retval 2            two points.
 * @retval 1            the circles touch: both records hold the one point. Points that rounding
 *                      sets apart count as two.
 * @retval 0            no intersection. Concentric circles leave `out` untouched, others leave
 *                      #VALUE_INVALID in `north` and `east`.
 * @retval ERR_REFUSED  a radius is not greater than 0, or the circles are the same one; `out` is
 *                      untouched.
 *
 * @par State
 * None.
 * @par Threads
 * Any.
 */
KAVO_EXPORT int32_t KavoCogoCalcCrossCircle(const CoordPt* centre1, double radius1,
                                            const CoordPt* centre2, double radius2, CoordPt out[2]);

/** @} */

/**
 * @name Points and lines
 * @{
 */

/**
 * @brief Foot of the perpendicular from a point to a line.
 *
 * @param[in] line   the line.
 * @param[in] point  the point; its flags are not looked at, its elevation is not read.
 * @param[out] foot  the foot. Flags 3 when the line has an elevation, else flags 1 and `elev` 0.
 *
 * @retval STATUS_OK          `foot` is written.
 * @retval ERR_NO_DIRECTION   the line's two points coincide; `foot` holds #VALUE_INVALID in `north`
 *                            and `east`, 0 in `elev`, flags 1.
 * @retval ERR_POINT_INVALID  a point that defines the line lacks #COORD_HAS_NE; `foot` as above.
 *
 * @par State
 * None.
 * @par Threads
 * Any.
 * @par Notes
 * - When both points of the line have an elevation, that of the foot is interpolated in proportion
 *   to the north difference. On a line of constant north it is therefore infinite or not a number,
 *   with flags 3 all the same.
 * - When one of them has an elevation, or the line is by point and direction, the foot takes it.
 */
KAVO_EXPORT int32_t KavoCogoCalcPtLine(const LineDef* line, const CoordPt* point, CoordPt* foot);

/**
 * @brief The point at a distance along a line and an offset across it.
 *
 * @param[in] a       start of the line; needs #COORD_HAS_NE.
 * @param[in] b       end of the line; needs #COORD_HAS_NE.
 * @param[in] along   horizontal distance from `a` towards `b`, metres; may be negative or go beyond
 *                    `b`.
 * @param[in] offset  offset across the line, metres; positive to the right.
 * @param[out] out    the point. Flags 3 when `a` or `b` has an elevation, else flags 1, `elev` 0.
 *
 * @retval STATUS_OK          `out` is written.
 * @retval ERR_NO_DIRECTION   `a` and `b` coincide in plan; `out` is untouched.
 * @retval ERR_POINT_INVALID  `a` or `b` lacks #COORD_HAS_NE; `out` is untouched.
 *
 * @par State
 * None.
 * @par Threads
 * Any.
 * @par Notes
 * The elevation follows the grade from `a` to `b`, also beyond both; with one elevation the line is
 * level. The offset does not change it.
 */
KAVO_EXPORT int32_t KavoCogoOffsetToCoord(const CoordPt* a, const CoordPt* b, double along,
                                          double offset, CoordPt* out);

/**
 * @brief Turns a line about its first point, then shifts it sideways.
 *
 * @param[in] line      the line.
 * @param[in] rotation  angle to turn by; positive is clockwise.
 * @param[in] offset    shift across the turned line, metres; positive to the right.
 * @param[out] out      the new line, in the mode of the old one. All fields but `reserved` are
 *                      written; those that the transformation does not concern are copies.
 *
 * @retval STATUS_OK          `out` is written.
 * @retval ERR_NO_DIRECTION   the line's two points coincide in plan; `out` is untouched.
 * @retval ERR_POINT_INVALID  a point that defines the line lacks #COORD_HAS_NE; `out` is untouched.
 *
 * @par State
 * None.
 * @par Threads
 * Any.
 * @par Notes
 * - `direction` of the result is the sum of the old azimuth and `rotation`, put through the
 *   library's in-place normalisation. Only a sum above one full circle passes it unchanged. Any
 *   other sum comes back as a number above 2000000000 which, modulo a full circle, lies 2615296
 *   units beyond it. For a usable direction of a line by point and direction give `direction`
 *   between one and two full circles, and reduce the result; the offset of such a line is taken
 *   across the normalised direction, so it needs this too. The points of a line by two points are
 *   not affected.
 * - In #LINE_MODE_TWO_POINTS an offset gives the points an elevation as #KavoCogoOffsetToCoord
 * does; a rotation without offset keeps their elevations.
 */
KAVO_EXPORT int32_t KavoCogoCalcTransLine(const LineDef* line, IntAngle rotation, double offset,
                                          LineDef* out);

/** @} */

/**
 * @name Area
 * @{
 */

/**
 * @brief Plane area enclosed by points taken in order.
 *
 * @param[in] points  the corners; the last one is joined to the first. Points without #COORD_HAS_NE
 *                    are passed over. Elevations are not read. May be null when `count` is less
 *                    than 1.
 * @param[in] count   number of records in `points`.
 *
 * @return the area in square metres, never negative whichever way round the points run; 0 for fewer
 *         than three valid points.
 *
 * @par State
 * None.
 * @par Threads
 * Any.
 * @par Notes
 * Cross products of neighbouring points, accumulated by compensated summation (W. Kahan, "Further
 * remarks on reducing truncation errors", Communications of the ACM 8(1), 1965). The sum is exact
 * to the last digits; the products are not: with coordinates of 4 million metres count on 3e-4
 * square metres, or reduce the coordinates by a constant.
 */
KAVO_EXPORT double KavoCogoCalcArea(const CoordPt* points, int16_t count);

/** @} */

/**
 * @name Station set-up
 * The instrument's position, elevation and orientation from sights to known points.
 *
 * Readings are given as they were taken, on either face, in [0, full circle). A sight is of face 2
 * when its zenith reading is half a circle or more; its horizontal reading is then turned by half a
 * circle. Face-1 readings are used as they are: they are not wrapped into one circle, so that 0 and
 * a full circle would count as two directions.
 *
 * A height term is added to the elevation of the sighted point where the elevation of the station
 * is derived from it: target height less instrument height for the elevation of the ground mark,
 * the target height alone for that of the instrument's axis.
 *
 * The orientation is what is added to a face-1 horizontal reading to get the azimuth. It is
 * computed from the azimuth of one known point even where that does not exist, because the station
 * is not finite or falls on the point; it is then a meaningless number of the usual range. Look at
 * the position before you trust it.
 * @{
 */

/** A computed station; 72 bytes. */
typedef struct StnSetupResult {
  CoordPt station; /**< The station, metres: flags 3, or flags 1 and `elev` 0 when no sight gives an
                        elevation. */
  IntAngle orient; /**< Azimuth less face-1 horizontal reading, in [-half circle, half circle). */
  uint32_t reserved; /**< Fills the record; never read or written. */
  double distCheck;  /**< Two-point resection: known less measured distance between the two points,
                          metres. */
  double distResid1; /**< Two-point resection: measured less computed distance to the first point,
                          metres. */
  double distResid2; /**< Two-point resection: the same to the second point, metres. */
  double elevDiff;   /**< Two-point resection: station elevation from the first sight less that from
                          the second, metres. */
} StnSetupResult;

/** One sight to a known point, with angles alone; 48 bytes. */
typedef struct StnAngleObs {
  CoordPt point;     /**< The known point; needs #COORD_HAS_NE, and #COORD_HAS_ELEV for the sight to
                          count for the elevation of the station. */
  IntAngle ha;       /**< Horizontal reading, either face. */
  IntAngle va;       /**< Zenith reading, either face. */
  double heightTerm; /**< Height term, metres. */
} StnAngleObs;

/** One sight to a known point, with or without a distance; 96 bytes. */
typedef struct StnDistObs {
  CoordPt point;     /**< The known point; needs #COORD_HAS_NE, and #COORD_HAS_ELEV for the sight to
                          count for the elevation of the station. */
  CoordPt local;     /**< The point in the instrument's own frame, metres: horizontal distance times
                          cosine and sine of the face-1 reading. Only `north` and `east` are read,
                          and only when both sights have a distance. */
  IntAngle ha;       /**< Horizontal reading, either face. */
  IntAngle va;       /**< Zenith reading, either face; it decides the face and nothing else. */
  double hd;         /**< Measured horizontal distance, metres; exactly 0.0 for none. */
  double vd;         /**< Measured height difference, point minus instrument, metres. */
  double heightTerm; /**< Height term, metres. */
} StnDistObs;

/**
 * @brief Station elevation from one sight to a benchmark.
 *
 * @param[in] bmElev      elevation of the benchmark, metres.
 * @param[in] heightTerm  height term of the sight, metres.
 * @param[in] vertDiff    height difference from the instrument to the benchmark, metres; positive
 *                        when the benchmark is higher.
 *
 * @return the elevation of the station, metres: (bmElev + heightTerm) - vertDiff, in that order.
 *
 * @par State
 * None.
 * @par Threads
 * Any.
 */
KAVO_EXPORT double KavoSTNSeaLevelCalcByBM(double bmElev, double heightTerm, double vertDiff);

/**
 * @brief Station from angles to three known points.
 *
 * @param[in] obs0     first sight; it gives the orientation.
 * @param[in] obs1     second sight.
 * @param[in] obs2     third sight.
 * @param[out] result  `station` and `orient` are written; the four checks stay untouched.
 *
 * @retval STATUS_OK           `station` and `orient` are written. `station.elev` is the mean over
 *                             the sights to points with an elevation.
 * @retval ERR_POINT_INVALID   a point lacks #COORD_HAS_NE; `result` is untouched.
 * @retval ERR_SAME_DIRECTION  two face-1 horizontal readings are equal; `result` is untouched.
 * @retval ERR_INDETERMINATE   the centres of the two circles coincide exactly, as for a station on
 *                             the circle through the three points; `result` is untouched.
 *
 * @par State
 * None.
 * @par Threads
 * Any.
 * @par Notes
 * The circle through the first two points and the station, and the one through the last two and the
 * station, meet in the second point and in the station: it is the image of that point in the line
 * of centres (the classical construction by circles of equal angle).
 * - There is no tolerance. A station near the circle through the three points is not refused, nor
 *   are angles near half a circle between two sights: they give what the formulas give, which may
 *   be far off or not finite. Check a direction to a further known point.
 * - The elevation from a sight is (point elevation + height term) - hd / tan(zenith), with hd
 *   computed from the position. The line of sight is kept one arc-minute off the vertical, so that
 *   it stays finite. Here, unlike for the face of a horizontal reading, a negative `va` is not
 *   wrapped: it counts as straight up.
 * - A host may switch on three corrections of that elevation: division of hd by the grid scale
 *   factor, raising of hd from sea level to the site, and earth curvature with refraction. They are
 *   off in the library as shipped.
 */
KAVO_EXPORT int32_t KavoSTN3PtResect(const StnAngleObs* obs0, const StnAngleObs* obs1,
                                     const StnAngleObs* obs2, StnSetupResult* result);

/**
 * @brief Station from sights to two known points, with one distance or two.
 *
 * @param[in] obsA         first sight; it gives the orientation, whichever has the distance.
 * @param[in] obsB         second sight.
 * @param[in,out] result   all fields but `reserved` are written. Zero it before the call: where no
 *                         position can be computed the one that it holds is read, see below.
 *
 * @retval STATUS_OK          all fields are written. `station.elev` is the mean over the sights
 *                            with a distance to a point with an elevation. A check that cannot be
 *                            formed is 0: `distCheck` needs both distances, `distResid1` and
 *                            `distResid2` need their own, `elevDiff` needs two elevations.
 * @retval ERR_NO_DIRECTION   the known points coincide in plan: `result` is untouched. Or, with two
 *                            distances, the two local positions coincide: as ERR_INDETERMINATE.
 * @retval ERR_POINT_INVALID  a point lacks #COORD_HAS_NE; `result` is untouched.
 * @retval ERR_NO_DISTANCE    no sight has a distance; `result` is untouched.
 * @retval ERR_INDETERMINATE  the one distance is greater than that between the points. The plane
 *                            position and `orient` are untouched; elevation, flags and the checks
 *                            are written all the same, the distance residuals against the position
 *                            that `result` held.
 *
 * @par State
 * None.
 * @par Threads
 * Any.
 * @par Notes
 * With one distance: law of sines in the triangle of the station and the two points. With two: the
 * similarity transformation of `local` onto the known points; its scale is free, the distances `hd`
 * enter the checks alone. Zenith readings never give an elevation here; `vd` does.
 */
KAVO_EXPORT int32_t KavoSTN2PtResect(const StnDistObs* obsA, const StnDistObs* obsB,
                                     StnSetupResult* result);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
