/**
 * @file kavostdlib.h
 * @brief Computation library of a surveying total station: plain C interface.
 *
 * Valid as C99 and as C++17. This is the only header that a program needs.
 *
 * Rules that hold for every function
 * ----------------------------------
 * - Lengths are metres, areas square metres, in double precision.
 * - Angles are `IntAngle`: integers in 1/16 arc-second. Azimuths count from north towards east.
 *   Vertical angles are zenith angles: 0 is straight up, a quarter circle is level, a half circle
 *   straight down; a reading beyond half a circle was taken on face 2.
 * - "Right" and "left" are those of a map with north up, looking along the stated direction.
 * - Inputs come first, outputs last, but for the offset measurements. Pointers are never null,
 *   unless a parameter says that it may be. An output never overlaps an input or another output.
 * - The library keeps no pointer beyond the call and never frees what it is handed.
 * - A function that returns `int32_t` returns a status: #STATUS_OK, a positive count of solutions
 *   where it says so, or a negative code; a `WARN_` code is negative too, but the call has done its
 *   work. Each function lists all statuses that it can return and what its outputs hold under each.
 *   "Untouched" means that not a byte is written.
 * - Outputs are written field by field; fields named `reserved` are neither read nor written, with
 *   one exception, named at #KavoCalc2PtTarget.
 * - Numbers are not checked for being finite: what is not a number travels through the formulas,
 *   and an angle that comes out as not a number is #ANGLE_INVALID, never a plausible one. Beware of
 *   infinite coordinates: the direction to an infinitely far point does exist.
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

#define STATUS_OK 0                 /**< Success; every output is written. */
#define ERR_REFUSED (-1)            /**< An argument out of range, or a figure with itself. */
#define ERR_NO_MEMORY (-3)          /**< The memory for the sights cannot be had. */
#define ERR_NO_BASE (-5)            /**< Nothing to measure against has been set. */
#define ERR_NO_DIRECTION (-1200)    /**< Defining points coincide: no direction, no distance. */
#define ERR_POINT_INVALID (-1201)   /**< A point lacks a position, or a height it needs. */
#define ERR_SIGHT_VERTICAL (-1202)  /**< The sight is vertical. */
#define ERR_SIGHT_OFF_BASE (-1203)  /**< The sight is too far off the base sight. */
#define ERR_NO_DISTANCE (-1204)     /**< No sight has a distance. */
#define ERR_INDETERMINATE (-1205)   /**< The geometry leaves the result open. */
#define ERR_PARALLEL (-1206)        /**< The lines are parallel. */
#define ERR_SAME_DIRECTION (-1207)  /**< Two readings are equal. */
#define WARN_NO_ELEVATION (-1208)   /**< The plane's first point has no elevation. */
#define WARN_SLOPE_VERTICAL (-1208) /**< The design slope is vertical. */
#define WARN_SLOPE_LEVEL (-1209)    /**< The design slope is level. */

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
  uint16_t flags; /**< #COORD_HAS_NE, #COORD_HAS_ELEV; other bits are ignored, 0 unless copied. */
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
 * @retval 2                  two points; also when a number that is not one makes them undecided,
 *                            and the points hold it.
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
 * @retval 2            two points; also when a number that is not one makes them undecided, and the
 *                      points hold it.
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
 *   to the north difference. On a line of constant north it is therefore never a number, with flags
 *   3 all the same.
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
 *                      written; those that the transformation does not concern are copies, unknown
 *                      flags included.
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
 * - A line by two points whose azimuth is not a number keeps its `direction`; a rotation that
 * brings the second point onto the first leaves the offset out. Both are #STATUS_OK.
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
 *         than three valid points. Of a boundary that crosses itself it is the difference between
 *         the parts that run round one way and the other.
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
 * @name Remote elevation
 * The height of a point that cannot carry a reflector (a cable, a girder) above a reflector set up
 * below or above it: first the reflector is measured, then the remote point is aimed at, as often
 * as wanted. Readings of either face are taken, each call for itself: a zenith angle of half a
 * circle or more is reduced to face 1, and the horizontal angle turned by half a circle with it.
 * Horizontal angles are readings of one circle, in [0, full circle).
 *
 * State of the family: one base, the reflector last measured. There is none at load.
 * @{
 */

/**
 * @brief Stores the sight to the reflector as the base of remote elevations.
 *
 * @param[in] base  the sight: `azimuth` (the horizontal reading, of any orientation), `zenith` and
 *                  `slopeDist` (metres) are read; `horizDist` and `dElev` are not.
 *
 * @retval STATUS_OK           the base is stored.
 * @retval ERR_SIGHT_VERTICAL  the zenith angle is within 16 units of straight up or 15 of straight
 *                             down; there is no base now, not even an earlier one.
 *
 * @par State
 * Replaces the base; a refusal removes it.
 * @par Threads
 * Not together with any function of the family.
 */
KAVO_EXPORT int32_t KavoREMSetBase(const AngDistRec* base);

/**
 * @brief Height of a remote point above the base reflector, and its distance to the side.
 *
 * The remote point is taken to stand at the reflector's horizontal distance.
 *
 * @param[in] ha      horizontal reading of the remote sight, in the orientation of the base.
 * @param[in] zenith  zenith reading of the remote sight.
 * @param[out] out    `elev`: height above the base reflector, metres, negative below it. `north`:
 *                    distance of the remote sight from the base sight, across it, metres, positive
 *                    to the right. `east` is 0 and `flags` 3, always and whatever the status. It is
 *                    a height and a distance, not a point.
 *
 * @retval STATUS_OK           `elev` and `north` are written.
 * @retval ERR_NO_BASE         there is no base; `north` and `elev` hold #VALUE_INVALID.
 * @retval ERR_SIGHT_VERTICAL  the zenith angle is within 16 units of straight up or 15 of straight
 *                             down; `elev` holds #VALUE_INVALID, `north` is untouched.
 * @retval ERR_SIGHT_OFF_BASE  the remote sight lies a quarter circle (more than 5183984 units) or
 *                             more beside the base sight; `north` holds #VALUE_INVALID, `elev` is
 *                             written.
 *
 * @par State
 * Reads the base.
 * @par Threads
 * Any, while #KavoREMSetBase is not running.
 * @par Notes
 * elev = horizontal base distance * (cot(zenith) - cot(base zenith)); north = horizontal base
 * distance * tan(horizontal angle from the base sight).
 */
KAVO_EXPORT int32_t KavoREMCalc(IntAngle ha, IntAngle zenith, CoordPt* out);

/** @} */

/**
 * @name Remote distance
 * @{
 */

/** Distances and direction from one point to another; 32 bytes. */
typedef struct RdmResult {
  double slopeDist; /**< Slope distance, metres. */
  double horizDist; /**< Horizontal distance, metres. */
  double dElev;     /**< Height difference, second point minus first, metres. */
  IntAngle azimuth; /**< Direction from the first point to the second, or #ANGLE_INVALID. */
  int32_t reserved; /**< Fills the record; never read or written. */
} RdmResult;

/**
 * @brief Distances and direction between two measured points.
 *
 * @param[in] first   from here; needs #COORD_HAS_NE.
 * @param[in] second  to here; needs #COORD_HAS_NE.
 * @param[out] out    `azimuth` in [0, full circle). Unless both points have an elevation,
 *                    `slopeDist` equals `horizDist` and `dElev` is 0.
 *
 * @retval STATUS_OK          all four fields are written. `azimuth` is #ANGLE_INVALID when a
 *                            coordinate is not a number or `horizDist` is 0.
 * @retval ERR_NO_DIRECTION   the points have one plane position. All four fields are written all
 *                            the same, `azimuth` as #ANGLE_INVALID: with two elevations `slopeDist`
 *                            and `dElev` hold the vertical separation.
 * @retval ERR_POINT_INVALID  a point lacks #COORD_HAS_NE; `out` is untouched.
 *
 * @par State
 * None.
 * @par Threads
 * Any.
 * @par Notes
 * When the first point's elevation is given and not a number, points with one plane position answer
 * #STATUS_OK.
 */
KAVO_EXPORT int32_t KavoRDMCalcByCoord(const CoordPt* first, const CoordPt* second, RdmResult* out);

/** @} */

/**
 * @name Slope staking
 * A measured point against a design slope that is given in cross-section, by two points with their
 * elevations and their offsets from the reference (centre) line. Offsets are negative to the left.
 *
 * State of the family: one slope, the one last set. There is none at load.
 * @{
 */

/** A measured point against the slope; 24 bytes. */
typedef struct SlopeStakeResult {
  /** How far the point lies outside the slope at the point's elevation, metres: positive farther
   * from the reference than the slope, negative nearer, on either side. #VALUE_INVALID for a level
   * slope. */
  double horizDiff;
  /** Elevation of the point above the slope at the point's offset, metres; negative below it.
   * #VALUE_INVALID for a vertical slope. */
  double vertDiff;
  double horizDist; /**< Horizontal distance from the reference point, metres. */
} SlopeStakeResult;

/**
 * @brief Stores a design slope.
 *
 * @param[in] elev1    elevation of the first point, metres.
 * @param[in] offset1  offset of the first point, metres; negative to the left.
 * @param[in] elev2    elevation of the second point, metres.
 * @param[in] offset2  offset of the second point, metres; not on the other side of the first.
 *
 * @retval STATUS_OK            the slope is stored.
 * @retval WARN_SLOPE_VERTICAL  the offsets are equal: a vertical slope is stored.
 * @retval WARN_SLOPE_LEVEL     the elevations are equal: a level slope is stored.
 * @retval ERR_REFUSED          the two points are one, or lie on opposite sides of the reference;
 *                              there is no slope now, not even an earlier one.
 *
 * @par State
 * Replaces the slope; a refusal removes it.
 * @par Threads
 * Not together with any function of the family.
 * @par Notes
 * The slope is on the left when one offset is negative, else on the right.
 */
KAVO_EXPORT int32_t KavoBRSetSlope(double elev1, double offset1, double elev2, double offset2);

/**
 * @brief Compares a measured point with the design slope.
 *
 * @param[in] reference  point of the reference line in this cross-section; needs #COORD_HAS_NE.
 * @param[in] point      the measured point; needs #COORD_HAS_NE and #COORD_HAS_ELEV.
 * @param[out] out       where the point lies; see #SlopeStakeResult.
 *
 * @retval STATUS_OK            `out` is written.
 * @retval WARN_SLOPE_VERTICAL  `out` is written, with `vertDiff` #VALUE_INVALID.
 * @retval WARN_SLOPE_LEVEL     `out` is written, with `horizDiff` #VALUE_INVALID.
 * @retval ERR_NO_BASE          there is no slope; `out` is untouched.
 * @retval ERR_POINT_INVALID    a point lacks what it needs; `out` is untouched.
 * @retval ERR_NO_DIRECTION     the points have one plane position; `out` is untouched.
 *
 * @par State
 * Reads the slope.
 * @par Threads
 * Any, while #KavoBRSetSlope is not running.
 * @par Notes
 * The distance between the two points is taken for the measured point's offset, on the side of the
 * slope: on which side of the reference the point was measured is not looked at.
 */
KAVO_EXPORT int32_t KavoBRCalc(const CoordPt* reference, const CoordPt* point,
                               SlopeStakeResult* out);

/** @} */

/**
 * @name Two-point target
 * @{
 */

/**
 * @brief The hidden point on the axis of a pole that carries two reflectors.
 *
 * @param[in] first        the reflector farther from the hidden point; needs #COORD_HAS_NE and
 *                         #COORD_HAS_ELEV.
 * @param[in] second       the reflector nearer to it; needs the same.
 * @param[in] nominal      known distance between the reflectors, metres; 0 takes the measured one.
 * @param[in] target       distance from the second reflector on to the hidden point, metres.
 * @param[out] separation  measured distance between the reflectors, metres: compare it with the
 *                         nominal one.
 * @param[out] out         the hidden point, flags 3.
 *
 * @retval STATUS_OK          both outputs are written.
 * @retval ERR_REFUSED        `nominal` or `target` is negative or not a number; both outputs are
 *                            untouched.
 * @retval ERR_NO_DIRECTION   the reflectors coincide in space; both outputs are untouched.
 * @retval ERR_POINT_INVALID  a reflector lacks what it needs; both outputs are untouched.
 *
 * @par State
 * None.
 * @par Threads
 * Any.
 * @par Notes
 * - The measured vector is divided by the nominal separation: one that differs from the measured
 *   separation stretches or shrinks the extension, which is then not `target` long.
 * - With `target` 0 the hidden point is a copy of the whole second record, `reserved` included.
 */
KAVO_EXPORT int32_t KavoCalc2PtTarget(const CoordPt* first, const CoordPt* second, double nominal,
                                      double target, double* separation, CoordPt* out);

/** @} */

/**
 * @name Offset measurements
 * Points that the reflector cannot occupy, computed from points that it can. The computed point is
 * handed to the host's model of the instrument, and what comes back is reported: the readings to
 * the point and the point itself.
 *
 * The library as shipped has no such model: every success then reports readings of 0, a distance
 * of 0 and a point with north, east and elevation 0 and flags 3. A host build brings its own model
 * (src/core/host.hpp). When it says that the instrument is on face 2, the readings are reported for
 * face 2: `ha` turned by half a circle, `va` as a full circle less the zenith angle.
 *
 * Every parameter `hookValue` goes to the host as it is; the parameters `unused` are not read.
 * @{
 */

/** Readings and a distance; 16 bytes. */
typedef struct AngleDistObs {
  IntAngle ha; /**< Horizontal direction. */
  IntAngle va; /**< Zenith angle. */
  double dist; /**< Distance, metres. */
} AngleDistObs;

/**
 * @brief Offset to a corner: foot of the perpendicular from a point to a wall by two points.
 *
 * @param[in] a          first point of the wall; its flags are not looked at.
 * @param[in] b          second point of the wall; its flags are not looked at.
 * @param[in] p          a point of the other wall, which meets the first at a right angle; needs
 *                       #COORD_HAS_NE and #COORD_HAS_ELEV. The corner takes its elevation.
 * @param[in] unused     not read.
 * @param[out] obsOut    readings to the corner, by the host.
 * @param[out] ptOut     the corner, by the host; flags 3.
 * @param[in] hookValue  for the host, metres.
 *
 * @retval STATUS_OK          both outputs are written, whatever the host's model answered.
 * @retval ERR_NO_DIRECTION   `a` and `b` coincide in plan; both outputs are untouched.
 * @retval ERR_POINT_INVALID  `p` lacks what it needs; both outputs are untouched.
 *
 * @par State
 * None.
 * @par Threads
 * Any that the host allows.
 */
KAVO_EXPORT int32_t KavoCalcOfsCorner3Pt(const CoordPt* a, const CoordPt* b, const CoordPt* p,
                                         double unused, AngleDistObs* obsOut, CoordPt* ptOut,
                                         double hookValue);

/**
 * @brief Offset to a corner: intersection of two walls by two points each.
 *
 * @param[in] a1         first point of the first wall; its flags are not looked at.
 * @param[in] b1         second point of the first wall; its flags are not looked at.
 * @param[in] a2         first point of the second wall; its flags are not looked at.
 * @param[in] b2         second point of the second wall; needs #COORD_HAS_NE and #COORD_HAS_ELEV.
 *                       The corner takes its elevation.
 * @param[in] unused     not read.
 * @param[out] obsOut    readings to the corner, by the host.
 * @param[out] ptOut     the corner, by the host; flags 3.
 * @param[in] hookValue  for the host, metres.
 *
 * @retval STATUS_OK          both outputs are written, whatever the host's model answered.
 * @retval ERR_INDETERMINATE  the walls are parallel, or a wall's points coincide in plan. `obsOut`
 *                            is untouched; `ptOut` holds #VALUE_INVALID in `north` and `east`, 0 in
 *                            `elev`, flags 1.
 * @retval ERR_POINT_INVALID  `b2` lacks what it needs. `obsOut` is untouched; `ptOut` holds the
 *                            intersection in plan, `elev` 0, flags 1.
 * @retval ERR_NO_DIRECTION   the length of a wall is lost to underflow (below 1e-160 metres);
 *                            outputs as with #ERR_POINT_INVALID.
 *
 * @par State
 * None.
 * @par Threads
 * Any that the host allows.
 * @par Notes
 * Only walls of exactly equal slope (east per north) are parallel: whoever takes walls that meet
 * under a small angle gets a corner as uncertain as that, at worst one that is not finite.
 */
KAVO_EXPORT int32_t KavoCalcOfsCorner4Pt(const CoordPt* a1, const CoordPt* b1, const CoordPt* a2,
                                         const CoordPt* b2, double unused, AngleDistObs* obsOut,
                                         CoordPt* ptOut, double hookValue);

/**
 * @brief Offset to a point on an inclined line, aimed at without a distance.
 *
 * The sighting is crossed in plan with the vertical plane through the line; the point is the one of
 * the line, in space, at that position. The sighting's zenith angle does not enter its height.
 *
 * @param[in] a                 first point of the line; needs #COORD_HAS_NE. Its `elev` is used
 *                              whatever its flags say.
 * @param[in] b                 second point of the line; needs #COORD_HAS_NE and #COORD_HAS_ELEV.
 * @param[in] ha                direction of the sighting, an azimuth; of either face.
 * @param[in] va                zenith angle of the sighting.
 * @param[in] station           the station; its flags are not looked at.
 * @param[in] instrumentHeight  height of the instrument, metres.
 * @param[out] obsOut           readings to the point, by the host.
 * @param[out] ptOut            the point, by the host; flags 3.
 * @param[in] hookValue         for the host, metres.
 *
 * @retval STATUS_OK          the host's model could observe the point; both outputs are written.
 * @retval ERR_REFUSED        so answers the library as shipped for every point that it computed.
 *                            Both outputs are written. The model of a host build answers what it
 *                            likes in this place, and best none of the codes below.
 * @retval ERR_POINT_INVALID  a point lacks what it needs; both outputs are untouched.
 * @retval ERR_NO_DIRECTION   `a` and `b` coincide in plan; both outputs are untouched.
 * @retval ERR_INDETERMINATE  the station stands on the line's vertical plane, or the line is
 *                            vertical as far as the numbers tell; both outputs are untouched.
 *
 * @par State
 * Replaces the two-point plane (#KavoREFSet2PtBasePlane) by the one through `a` and `b`, also when
 * the station stands on it; all other refusals leave the plane alone.
 * @par Threads
 * Not together with itself or any function of the two-point plane.
 * @par Notes
 * - A sighting that is vertical or parallel to the line is not refused: the point is then computed
 *   from #VALUE_INVALID and means nothing. #KavoREFCalc2PtPlane with the same sighting tells: after
 *   this call it uses the line's plane, and gives #VALUE_INVALID for such a sighting.
 * - Whether the point lies beyond `b` is judged by the signs of both coordinate differences. On a
 *   line that runs along an axis up to rounding, but not exactly, a point beyond `b` may therefore
 *   come out as far on the other side of it: give the two points exactly equal coordinates there.
 */
KAVO_EXPORT int32_t KavoCalcOfsLineHA(const CoordPt* a, const CoordPt* b, IntAngle ha, IntAngle va,
                                      const CoordPt* station, double instrumentHeight,
                                      AngleDistObs* obsOut, CoordPt* ptOut, double hookValue);

/**
 * @brief Offset to the centre of a round object, from its surface and its two edges.
 *
 * @param[in] surface    a sighting to the surface: `ha` an azimuth, `va` a zenith angle, `dist` the
 *                       horizontal distance along `ha`, metres.
 * @param[in] hookValue  for the host, metres.
 * @param[in] ha2        direction to one edge, an azimuth.
 * @param[in] va2        zenith angle of that sighting.
 * @param[in] ha3        direction to the other edge; which is left and which right does not matter.
 * @param[in] va3        zenith angle of that sighting.
 * @param[in] station    the station; its flags are not looked at.
 * @param[in] unused     not read.
 * @param[out] obsOut    readings to the centre, by the host.
 * @param[in,out] ptOut  in: `elev` is the elevation handed to the host. Out: the centre, by the
 *                       host; flags 3.
 * @param[out] radius    radius of the object, metres.
 *
 * @retval STATUS_OK          all three outputs are written, whatever the host's model answered.
 * @retval ERR_POINT_INVALID  a sighting is exactly vertical, or the surface's direction passes by
 *                            the object; the outputs are untouched.
 * @retval ERR_INDETERMINATE  the two edges have one direction or opposite ones; the outputs are
 *                            untouched.
 *
 * @par State
 * None.
 * @par Threads
 * Any that the host allows.
 * @par Notes
 * - Each of the three sightings may be of either face: a zenith angle beyond half a circle turns
 *   its direction by half a circle. The zenith angles serve nothing else.
 * - A radius that is negative says that the surface was sighted in the direction opposite to the
 *   object.
 */
KAVO_EXPORT int32_t KavoCalcOfsCircle(const AngleDistObs* surface, double hookValue, IntAngle ha2,
                                      IntAngle va2, IntAngle ha3, IntAngle va3,
                                      const CoordPt* station, double unused, AngleDistObs* obsOut,
                                      CoordPt* ptOut, double* radius);

/** @} */

/**
 * @name Reference line
 * Points measured against a base line through two known points: set the line once with
 * #KavoREFSetBaseLine, then call #KavoREFCalc for each point.
 * @{
 */

/** A point measured against a reference line or a reference arc; 56 bytes. */
typedef struct RefLineResult {
  CoordPt foot;  /**< Foot of the perpendicular on the line; of an arc none: zeros and flags 0. */
  double along;  /**< Distance along the line or arc from its start, metres; negative before it. */
  double offset; /**< Offset across it, metres; positive to the right of the way ahead. */
  double dElev;  /**< Height of the point above the line or arc, metres; 0 without heights. */
} RefLineResult;

/**
 * @brief Sets the base line of the reference line.
 *
 * @param[in] start  first base point; needs #COORD_HAS_NE.
 * @param[in] end    second base point; needs #COORD_HAS_NE.
 *
 * @retval STATUS_OK          the base line is set.
 * @retval ERR_NO_DIRECTION   the points have the same north and east; no base line is set.
 * @retval ERR_POINT_INVALID  a point lacks #COORD_HAS_NE; no base line is set.
 *
 * @par State
 * Writes the base line. A refusal also removes the base line that was set before.
 * @par Threads
 * Not at the same time as itself or #KavoREFCalc.
 * @par Notes
 * With two elevations the line has the grade from `start` to `end`; with one it is level at that
 * elevation; with none it has no height.
 */
KAVO_EXPORT int32_t KavoREFSetBaseLine(const CoordPt* start, const CoordPt* end);

/**
 * @brief A point against the base line: distance along it, offset across it, foot and height.
 *
 * @param[in] point  the measured point; needs #COORD_HAS_NE.
 * @param[out] out   `along` from the base line's start, `offset` and `dElev` in metres; `foot` with
 *                   the elevation of the line and flags 3 when the point and the line have heights,
 *                   else with `elev` 0 and flags 1, and `dElev` 0.
 *
 * @retval STATUS_OK          `out` is written.
 * @retval ERR_NO_BASE        no base line is set; `out` is untouched.
 * @retval ERR_POINT_INVALID  the point lacks #COORD_HAS_NE; `out` is untouched.
 *
 * @par State
 * Reads the base line.
 * @par Threads
 * Any, but not at the same time as #KavoREFSetBaseLine.
 * @par Notes
 * With the unit vector (uN, uE) of the line and (dN, dE) from its start to the point: along =
 * uE dE + uN dN; offset = uN dE - uE dN. The line and its grade go on beyond both base points.
 */
KAVO_EXPORT int32_t KavoREFCalc(const CoordPt* point, RefLineResult* out);

/** @} */

/**
 * @name Reference arc
 * Points measured against a circular curve in plan: define the arc once in one of three ways, then
 * call #KavoREFCalcArc for each point.
 *
 * The radius has a sign. A positive one is that of a clockwise arc: it turns to the right and its
 * centre lies to the right of the start tangent. A negative one is that of an anticlockwise arc.
 * Tangents are azimuths in the sense of travel.
 * @{
 */

#pragma pack(push, 4)
/**
 * The parameters of the reference arc; 28 bytes, aligned to 4. Packed (a pragma that gcc, clang and
 * MSVC share), for its last field would otherwise be followed by 4 bytes of padding: the library
 * never writes behind byte 27. Read the doubles through the record, not through pointers to them.
 */
typedef struct RefArcParams {
  IntAngle startDir;     /**< Azimuth of the start tangent. */
  IntAngle endDir;       /**< Azimuth of the end tangent; see #KavoREFSetArcByRadiusArcLen. */
  double radius;         /**< Radius, metres; positive is clockwise. */
  double arcLength;      /**< Length along the arc, metres; positive. */
  IntAngle centralAngle; /**< Angle at the centre, with the sign of the radius. */
} RefArcParams;
#pragma pack(pop)

/**
 * @brief Defines the reference arc by its two ends and the tangents there.
 *
 * @param[in] start         start point; needs #COORD_HAS_NE. Its elevation is that of the arc.
 * @param[in] end           end point; needs #COORD_HAS_NE.
 * @param[in] startTangent  azimuth at the start.
 * @param[in] endTangent    azimuth at the end.
 *
 * @retval STATUS_OK          the arc is defined.
 * @retval ERR_NO_DIRECTION   the ends have the same north and east.
 * @retval ERR_POINT_INVALID  a point lacks #COORD_HAS_NE.
 * @retval ERR_INDETERMINATE  the tangents are the same azimuth.
 *
 * @par State
 * Writes the reference arc. A refusal leaves the numbers of the arc before in place.
 * @par Threads
 * Not at the same time as any function of the reference arc.
 * @par Notes
 * - The arc leaves `start` along the start tangent and ends on the line of the end tangent, as far
 *   behind the point where the tangents meet as `start` lies before it: R = tan((half circle -
 *   turn) / 2) times that distance. It is clockwise when the end tangent turns to the right.
 * - Opposite tangents make a half circle, from `start` straight across to the line of the end
 *   tangent, to the side on which `end` lies. An `end` straight ahead of `start` leaves no arc: the
 *   radius is nothing or not a number, without a refusal (meant so).
 * - `end` need not be the end of the arc. When it is, to less than 0.05 m in plan, and `start` has
 *   #COORD_HAS_ELEV, the heights of the arc are graded from `start.elev` to `end.elev`, whatever
 *   the elevation flag of `end` says (meant so); otherwise the arc is level.
 * - The tangents are intersected through their slopes, as lines are in #KavoCogoCalcCrossLine:
 *   reduce national-grid coordinates by a constant. Whether and where they meet is not looked at
 * (meant so): unless it is ahead of `start`, the arc does not end on the end tangent; and when they
 * do not meet, which takes an infinite or immense coordinate, the radius is a number without
 * meaning.
 */
KAVO_EXPORT int32_t KavoREFSetArcByCoord(const CoordPt* start, const CoordPt* end,
                                         IntAngle startTangent, IntAngle endTangent);

/**
 * @brief Defines the reference arc by its start, its radius and the tangents at both ends.
 *
 * @param[in] start         start point; needs #COORD_HAS_NE. Its elevation is that of the arc.
 * @param[in] startTangent  azimuth at the start.
 * @param[in] radius        radius, metres, not 0; positive is clockwise.
 * @param[in] endTangent    azimuth at the end.
 *
 * @retval STATUS_OK          the arc is defined.
 * @retval ERR_REFUSED        the radius is 0.
 * @retval ERR_POINT_INVALID  the start lacks #COORD_HAS_NE.
 * @retval ERR_INDETERMINATE  the tangents are the same azimuth; found before the radius is looked
 *                            at.
 *
 * @par State
 * Writes the reference arc, which is level. A refusal leaves the numbers of the arc before in
 * place.
 * @par Threads
 * Not at the same time as any function of the reference arc.
 */
KAVO_EXPORT int32_t KavoREFSetArcByRadiusHAngle(const CoordPt* start, IntAngle startTangent,
                                                double radius, IntAngle endTangent);

/**
 * @brief Defines the reference arc by its start, its start tangent, its radius and its length.
 *
 * @param[in] start         start point; needs #COORD_HAS_NE. Its elevation is that of the arc.
 * @param[in] startTangent  azimuth at the start.
 * @param[in] radius        radius, metres, not 0; positive is clockwise.
 * @param[in] arcLength     length along the arc, metres, greater than 0; what exceeds the full
 *                          circle is cut off.
 *
 * @retval STATUS_OK          the arc is defined.
 * @retval ERR_REFUSED        the radius is 0, or the length is not greater than 0.
 * @retval ERR_POINT_INVALID  the start lacks #COORD_HAS_NE.
 *
 * @par State
 * Writes the reference arc, which is level. A refusal leaves the numbers of the arc before in
 * place.
 * @par Threads
 * Not at the same time as any function of the reference arc.
 * @par Notes
 * The end tangent is the start tangent plus the central angle and is not brought back into one
 * circle (meant so): between minus one and two full circles.
 */
KAVO_EXPORT int32_t KavoREFSetArcByRadiusArcLen(const CoordPt* start, IntAngle startTangent,
                                                double radius, double arcLength);

/**
 * @brief Reads the parameters of the reference arc back.
 *
 * @param[out] out  the parameters; 28 bytes are written and no more.
 *
 * @retval STATUS_OK  always, also when no arc is defined (meant so): then the numbers are those of
 *                    the arc before the last refusal, or zeros.
 *
 * @par State
 * Reads the reference arc.
 * @par Threads
 * Any, but not at the same time as a definition of the arc.
 * @par Notes
 * The central angle is truncated to the unit. Angles that a number like NaN leaves without a value
 * are #ANGLE_INVALID.
 */
KAVO_EXPORT int32_t KavoREFGetArcParams(RefArcParams* out);

/**
 * @brief A point against the reference arc: distance along it, offset from it and height.
 *
 * @param[in] point  the measured point; needs #COORD_HAS_NE. Its `elev` is used whatever its flags
 *                   say when the arc has a height.
 * @param[out] out   `along`, `offset` and `dElev` in metres; `foot` is all zeros with flags 0.
 *
 * @retval STATUS_OK          `out` is written.
 * @retval ERR_NO_DIRECTION   the point is the centre of the arc; `out` is untouched.
 * @retval ERR_POINT_INVALID  the point lacks #COORD_HAS_NE; `out` is untouched.
 *
 * @par State
 * Reads the reference arc. Whether one is defined is not tested (meant so): without one the point
 * is measured against the arc before the last refusal, at first against zeros. Look at the status
 * of the definition.
 * @par Threads
 * Any, but not at the same time as a definition of the arc.
 * @par Notes
 * The direction from the centre to the point, truncated to the unit, decides:
 * - on the arc, `along` is the angle from the start times |R| and `offset` is taken radially;
 * - less than a quarter circle before the start, the point is projected on the start tangent;
 * - elsewhere it is past the end and is projected on the end tangent; `along` exceeds the length.
 *
 * What follows is meant so:
 * - The formulas serve arcs of up to a half circle. On a longer arc, points more than a half circle
 *   on from the start are taken to be past the end or before the start.
 * - Past the end of an anticlockwise arc, `along` and `offset` are off where the point lies between
 *   a half and three quarters of a circle on from the start, unless the arc is a half circle.
 * - On an anticlockwise arc, a point exactly a half circle on from the start (to the unit) has the
 *   length of that half circle as a negative `along`: so has the end of a half circle.
 * - A point exactly a quarter circle before the start (to the unit) counts as on the arc, with the
 *   length of that quarter as a negative `along`.
 *
 * The height of the arc is that of its start, or graded to its end as #KavoREFSetArcByCoord says;
 * the grade goes on before the start and past the end.
 * Where the arc or the point is not a number, `offset` is not a number; nor is `along`, but where
 * the other coordinate of the point is exactly the centre's.
 */
KAVO_EXPORT int32_t KavoREFCalcArc(const CoordPt* point, RefLineResult* out);

/** @} */

/**
 * @name Two-point plane
 * The vertical plane through two points (a facade), and sights without a distance that pierce it.
 * Only the first point's elevation counts: heights on the plane are measured from it.
 *
 * State of the family: one plane, the one last set, by #KavoREFSet2PtBasePlane or by
 * #KavoCalcOfsLineHA. There is none at load.
 * @{
 */

/**
 * @brief Stores the vertical plane through two points.
 *
 * @param[in] p1  first point; needs #COORD_HAS_NE. Its elevation, if it has one, is the level from
 *                which heights are measured.
 * @param[in] p2  second point; needs #COORD_HAS_NE. Its elevation is not read.
 *
 * @retval STATUS_OK          the plane is stored.
 * @retval WARN_NO_ELEVATION  the plane is stored; without an elevation of `p1` there will be no
 *                            heights on it.
 * @retval ERR_NO_DIRECTION   the points coincide in plan; there is no plane now, not even an
 *                            earlier one.
 * @retval ERR_POINT_INVALID  a point lacks #COORD_HAS_NE; there is no plane now.
 *
 * @par State
 * Replaces the plane; a refusal removes it.
 * @par Threads
 * Not together with any function of the family.
 */
KAVO_EXPORT int32_t KavoREFSet2PtBasePlane(const CoordPt* p1, const CoordPt* p2);

/**
 * @brief The point in which a sight pierces the plane.
 *
 * @param[in] ha                direction of the sight, an azimuth.
 * @param[in] va                zenith angle of the sight; beyond half a circle it was read on face
 *                              2, and the direction is turned by half a circle with it.
 * @param[in] station           the station: `north`, `east` and `elev` are read, its flags are not
 *                              looked at.
 * @param[in] instrumentHeight  height of the instrument above the station, metres.
 * @param[out] result           the point; flags 3 always.
 * @param[out] alongPlane       horizontal distance of the point from the first base point, metres,
 *                              positive towards the second.
 * @param[out] heightOnPlane    height of the point above the first base point, metres; 0 when that
 *                              has no elevation.
 *
 * @retval STATUS_OK          all outputs are written. When the sight is vertical or parallel to the
 *                            plane, there is no such point and they hold #VALUE_INVALID.
 * @retval WARN_NO_ELEVATION  as #STATUS_OK, on a plane whose first point has no elevation:
 *                            `heightOnPlane` is 0 and the point's `elev` is that of the sight.
 * @retval ERR_NO_BASE        there is no plane; all outputs but the flags hold #VALUE_INVALID.
 * @retval ERR_INDETERMINATE  the station stands on the plane; outputs as with #ERR_NO_BASE.
 *
 * @par State
 * Reads the plane.
 * @par Threads
 * Any, while no function is running that sets the plane.
 * @par Notes
 * - The sight is a whole line in plan: a plane behind the station is pierced too. Compare the
 *   direction to the point with `ha` where that matters.
 * - The station stands on the plane when its distance from the plane times the distance of the base
 *   points is less than 5e-7 square metres. A sight is parallel to the plane when the sine of the
 *   angle between them is below 5e-7 (about a tenth of an arc-second). Vertical is exactly so.
 */
KAVO_EXPORT int32_t KavoREFCalc2PtPlane(IntAngle ha, IntAngle va, const CoordPt* station,
                                        double instrumentHeight, CoordPt* result,
                                        double* alongPlane, double* heightOnPlane);

/** @} */

/**
 * @name Three-point plane
 * Sights without distance, intersected with a plane in any attitude: set the plane once with
 * #KavoREFSet3PtBasePlane, then call #KavoREFCalc3PtPlane for each sight.
 * @{
 */

/**
 * @brief Sets the reference plane through three points, or the vertical one through two.
 *
 * @param[in] p1  first point, origin of the coordinates within the plane; needs #COORD_HAS_NE and
 *                #COORD_HAS_ELEV, as do the others.
 * @param[in] p2  second point; from `p1` to `p2` runs the direction along the plane.
 * @param[in] p3  third point; null for the vertical plane through `p1` and `p2`.
 *
 * @retval STATUS_OK          the plane is set.
 * @retval ERR_NO_DIRECTION   two of the points are the same in north, east and elevation; no plane
 *                            is set.
 * @retval ERR_POINT_INVALID  a point lacks #COORD_HAS_NE or #COORD_HAS_ELEV; no plane is set.
 * @retval ERR_INDETERMINATE  the points lie in one line (their cross product is shorter than 5e-7
 *                            square metres), or `p1` and `p2` lie closer than 5e-7 m; no plane is
 *                            set.
 *
 * @par State
 * Writes the plane. A refusal also removes the plane that was set before.
 * @par Threads
 * Not at the same time as itself or #KavoREFCalc3PtPlane.
 * @par Notes
 * The third point of the vertical plane is `p2` raised by 1 m: `p1` straight above or below `p2`
 * gives #ERR_INDETERMINATE, or #ERR_NO_DIRECTION when it is just that point.
 */
KAVO_EXPORT int32_t KavoREFSet3PtBasePlane(const CoordPt* p1, const CoordPt* p2, const CoordPt* p3);

/**
 * @brief Where a sight pierces the three-point plane.
 *
 * @param[in] ha                azimuth of the sight.
 * @param[in] va                zenith reading of the sight; beyond half a circle it was taken on
 *                              face 2, and so was `ha`.
 * @param[in] station           the station; north, east and elev are read, its flags are not
 *                              looked at.
 * @param[in] instrumentHeight  height of the instrument above the station, metres.
 * @param[out] result           the point where the sight pierces the plane, flags 3.
 * @param[out] alongPlane       its distance from the first point, along the direction from the
 *                              first to the second, metres.
 * @param[out] acrossPlane      its distance from that direction within the plane, metres; positive
 *                              to the right of it as seen from the instrument.
 *
 * @retval STATUS_OK          the outputs hold the point; or #VALUE_INVALID in all five numbers when
 *                            the sight runs along the plane or away from it (meant so: test
 *                            `alongPlane`).
 * @retval ERR_NO_BASE        no plane is set; the outputs hold #VALUE_INVALID, flags 3.
 * @retval ERR_INDETERMINATE  the instrument lies within 5e-7 m of the plane; the outputs hold
 *                            #VALUE_INVALID, flags 3.
 *
 * @par State
 * Reads the plane and turns it to face the instrument. It stays turned until an instrument on the
 * other side, or the next #KavoREFSet3PtBasePlane, turns it again.
 * @par Threads
 * Not at the same time as itself or #KavoREFSet3PtBasePlane.
 * @par Notes
 * `acrossPlane` changes its sign with the side of the plane that the instrument is on: on a
 * vertical plane whose second point is to the right of the first it is positive downwards, from
 * behind upwards. A vertical sight is a sight like any other.
 */
KAVO_EXPORT int32_t KavoREFCalc3PtPlane(IntAngle ha, IntAngle va, const CoordPt* station,
                                        double instrumentHeight, CoordPt* result,
                                        double* alongPlane, double* acrossPlane);

/** @} */

/**
 * @name Station set-up
 * The instrument's position, elevation and orientation from sights to known points.
 *
 * The two- and three-point resections take readings as they were taken, on either face, in [0, full
 * circle). A sight is of face 2 when its zenith reading is half a circle or more; its horizontal
 * reading is then turned by half a circle. Face-1 readings are used as they are: they are not
 * wrapped into one circle, so that 0 and a full circle would count as two directions. The
 * multi-point resection and the known line want face-1 readings: see there.
 *
 * A height term is added to the elevation of the sighted point where the elevation of the station
 * is derived from it: target height less instrument height for the elevation of the ground mark,
 * the target height alone for that of the instrument's axis.
 *
 * The orientation is what is added to a face-1 horizontal reading to get the azimuth. The two- and
 * three-point resections compute it from the azimuth of one known point even where that does not
 * exist, because the station is not finite or falls on the point; it is then a meaningless number
 * of the usual range. Look at the position before you trust it.
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

/** Azimuth of a known line: take it from the coordinates of its two points. */
#define AZIMUTH_FROM_POINTS 0x7FFFFFFF

/** Elevation of a station whose known line starts at a point without one. */
#define NO_ELEVATION 1e-37

/** One sight to a known point for an adjustment, with or without a distance; 72 bytes. */
typedef struct MultiResectInput {
  CoordPt point;     /**< The known point. Its position is used whatever #COORD_HAS_NE says: leave
                          points without one out. #COORD_HAS_ELEV lets the sight count for the
                          elevation of the station. */
  IntAngle ha;       /**< Horizontal reading, face 1. */
  IntAngle va;       /**< Zenith reading, face 1: from 0 to below half a circle. */
  double slopeDist;  /**< Measured slope distance, metres; exactly 0.0 for none. It says whether the
                          next two fields count, and is not used otherwise. */
  double horizDist;  /**< Horizontal distance of the same measurement, metres. */
  double heightDiff; /**< Height difference of the same measurement, point minus instrument,
                          metres. */
  double heightTerm; /**< Height term, metres. */
} MultiResectInput;

/** An adjusted station; 64 bytes. */
typedef struct MultiResectResult {
  CoordPt station; /**< The station, metres: flags 3, or flags 1 and `elev` 0 when no sight gives an
                        elevation. */
  IntAngle orient; /**< Azimuth less face-1 horizontal reading, in [0, full circle), truncated to
                        the unit. */
  int32_t reserved;  /**< Fills the record; never read or written. */
  double sdNorth;    /**< Standard deviation of `station.north`, metres. */
  double sdEast;     /**< Standard deviation of `station.east`, metres. */
  double elevSpread; /**< Greatest less least of the station elevations from the single sights,
                          metres; 0 when there is none. The known line writes another figure. */
} MultiResectResult;

/** What an adjustment leaves of one sight; 24 bytes. */
typedef struct MultiResectResidual {
  IntAngle hzResid; /**< Computed less measured direction, truncated towards zero to the unit. */
  int32_t reserved; /**< Fills the record; never read or written. */
  double distResid; /**< Computed less measured horizontal distance, metres; 0 for a sight without a
                         distance or to a point without an elevation. */
  double elevResid; /**< Elevation of the station from this sight less the mean, metres; 0 for such
                         sights. */
} MultiResectResidual;

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

/**
 * @brief Station from any number of sights to known points, by least squares.
 *
 * Hand in face-1 readings. A sight whose `va` is negative, or half a circle or more, counts as of
 * face 2, and the library turns its horizontal reading wrongly: the direction comes out 2615296
 * units (45.4 degrees) beyond its face-1 equivalent. A set of face-2 sights alone gives the right
 * position with an orientation that is wrong by that much, mixed faces give a wrong position or
 * none. Reduce such readings before the call: `ha` turned by half a circle, `va` taken from a full
 * circle.
 *
 * @param[in] count       number of sights.
 * @param[in] sights      `count` sights. They determine a station when they go to three points or
 *                        more; to two points when both distances are measured, or one that is not
 *                        longer than the points are apart.
 * @param[out] result     the station; all fields but `reserved` are written.
 * @param[out] residuals  `count` records, in the order of the sights; all fields but `reserved` are
 *                        written.
 *
 * @retval STATUS_OK          `result` and all `residuals` are written.
 * @retval ERR_REFUSED        `count` is 0; or the sights determine no station: there are too few,
 *                            their points coincide, or without any distance all is in line or on
 *                            one circle; or a coordinate in plan or a horizontal distance is not
 *                            finite, or a distance not greater than 0; or the memory for the
 *                            adjustment cannot be had. `result` and `residuals` are untouched.
 * @retval ERR_NO_MEMORY      the memory for the sights cannot be had, or `count` is negative;
 *                            `result` and `residuals` are untouched.
 * @retval ERR_INDETERMINATE  the sights contradict one another, as when two points are mistaken for
 *                            each other: the adjustment has not settled after ten passes, or it has
 *                            gone where its residuals do not hold. `result` and `residuals` are
 *                            untouched.
 *
 * @par State
 * None. Memory is taken from the heap, less than 400 bytes a sight, and given back before the call
 * returns, but for two losses that are meant so: where the heap cannot give the elements of a
 * matrix, its row handles stay behind, and where the adjustment comes to numbers that are not
 * finite, a vector of 32 bytes does. Neither call succeeds.
 * @par Threads
 * Any.
 * @par Notes
 * Adjustment by indirect observations in the plane. Its observations are the direction of every
 * sight, weighted for 2 arc-seconds, and the horizontal distance of every sight that has one,
 * weighted for 2 mm and 2 ppm of it, as the root of the sum of their squares, whether or not its
 * point has an elevation.
 * - The standard deviations are those after the adjustment. Without redundancy (three directions;
 *   two directions and one distance) nothing is left to estimate them from: they and the residuals
 *   are next to 0 and mean nothing, and nothing tells a wrong reading or a wrong point from a right
 *   one. Take one sight more.
 * - The elevation of the station is the mean over the sights that have a distance and whose points
 *   have an elevation: (point elevation + height term) - height difference. Only when there is no
 *   such sight at all do the zenith readings to points with an elevation give it, as for
 *   #KavoSTN3PtResect; `elevResid` is 0 then, and `elevSpread` shows how well they agree.
 * - Elevations do not enter the position. What is not a number in them makes `station.elev` not a
 *   number, and `elevSpread` meaningless.
 * - With a station near the circle through the points, directions alone determine it badly: look
 *   at the standard deviations.
 * - `orient` always counts azimuths from north. One that falls short of a full circle by no more
 *   than the last digit of a double comes out as a full circle.
 * - Sights that contradict one another are refused on every machine, but where the last digits
 *   decide how, as #ERR_REFUSED on one and as #ERR_INDETERMINATE on another.
 */
KAVO_EXPORT int32_t KavoSTNMultiResect(int16_t count, const MultiResectInput* sights,
                                       MultiResectResult* result, MultiResectResidual* residuals);

/**
 * @brief Station from sights to a known point and to a second point on a known line through it.
 *
 * The second point is laid on the line at the measured distance from the first, and the station is
 * adjusted from the two sights as in #KavoSTNMultiResect. Hand in face-1 readings: with a sight
 * whose `va` is negative, or half a circle or more, the station is wrong with #STATUS_OK, if there
 * is one. Its reading is turned wrongly as there; only the measured line takes that of the first
 * sight as it is.
 *
 * @param[in] sight1       sight to the known point where the line begins. With
 *                         #AZIMUTH_FROM_POINTS it needs #COORD_HAS_NE; its position is used in any
 *                         case.
 * @param[in] sight2       sight to the second point. The position of its `point` is read only with
 *                         #AZIMUTH_FROM_POINTS, and then needs #COORD_HAS_NE. Of both sights
 *                         `horizDist` and `heightDiff` are read whatever `slopeDist` says.
 * @param[in] lineAzimuth  azimuth of the line from the first point to the second, or
 *                         #AZIMUTH_FROM_POINTS to take it from their coordinates.
 * @param[out] result      all fields but `reserved` are written. `station.elev` comes from the
 *                         first sight alone: (point elevation - height difference) + height term,
 *                         or #NO_ELEVATION when its point has none; `station.flags` do not tell
 *                         that, they may be 3 from the second point. With #AZIMUTH_FROM_POINTS
 *                         `elevSpread` is the measured less the known height difference between
 *                         the points; without two elevations the known one counts as 0.
 * @param[out] accuracy    two records, as the residuals of #KavoSTNMultiResect. With
 *                         #AZIMUTH_FROM_POINTS `distResid` of the first is the measured less the
 *                         known horizontal distance between the points.
 *
 * @retval STATUS_OK          `result` and `accuracy` are written.
 * @retval ERR_NO_DIRECTION   the sighted points coincide in plan as measured; or, with
 *                            #AZIMUTH_FROM_POINTS, by their coordinates, or one of these (the
 *                            elevations included, whatever the flags say) is not a number. `result`
 *                            and `accuracy` are untouched.
 * @retval ERR_POINT_INVALID  with #AZIMUTH_FROM_POINTS, a point lacks #COORD_HAS_NE; `result` and
 *                            `accuracy` are untouched.
 * @retval ERR_REFUSED        as #KavoSTNMultiResect: above all no `slopeDist`, or only one with a
 *                            `horizDist` longer than the points are apart; `result` and `accuracy`
 *                            are untouched.
 * @retval ERR_NO_MEMORY      as #KavoSTNMultiResect; `result` and `accuracy` are untouched.
 * @retval ERR_INDETERMINATE  as #KavoSTNMultiResect; `result` and `accuracy` are untouched.
 *
 * @par State
 * None.
 * @par Threads
 * Any.
 * @par Notes
 * The line's length is the measured one: with both distances all residuals and standard deviations
 * come out next to 0, and only the figures of #AZIMUTH_FROM_POINTS check the measurement.
 */
KAVO_EXPORT int32_t KavoSTNKnownLine(const MultiResectInput* sight1, const MultiResectInput* sight2,
                                     IntAngle lineAzimuth, MultiResectResult* result,
                                     MultiResectResidual accuracy[2]);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
