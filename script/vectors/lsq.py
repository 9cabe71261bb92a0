"""The least-squares engine: products, solver, observations with weights, steps of an adjustment.

Matrices are lists of rows, full ones with all their zeros. Every sum runs in the order of its index
and leaves out what the library leaves out: in a product the terms with a factor that is exactly
zero. Lengths are metres, angles radians.
"""

from dataclasses import dataclass

from ieee import divide, square

Matrix = list[list[float]]
Column = list[float]

ENGINE_OK = 0
ENGINE_SINGULAR = 3

VALUE_ABSENT = 1e20
SPACING = float.fromhex("0x1p-52")
ZERO_PIVOT = 1e-20
PASS_LIMIT = 5
ARCSEC_TO_RAD = 4.84813681109536e-6

# --- Products -------------------------------------------------------------------------------------


def product_sum(row: Column, column: Column) -> float:
    """One element of a product; a factor of exactly zero takes its term out."""
    total = 0.0
    for a, b in zip(row, column):
        if a != 0.0 and b != 0.0:
            total = total + a * b
    return total


def columns(m: Matrix) -> Matrix:
    """The columns of a matrix."""
    return [list(column) for column in zip(*m)]


def mat_mul(a: Matrix, b: Matrix) -> Matrix:
    """A B."""
    b_columns = columns(b)
    return [[product_sum(row, column) for column in b_columns] for row in a]


def mat_mul_trans_a(a: Matrix, b: Matrix) -> Matrix:
    """A^T B."""
    return mat_mul(columns(a), b)


def mat_mul_trans_b(a: Matrix, b: Matrix) -> Matrix:
    """A B^T."""
    return [[product_sum(row, other) for other in b] for row in a]


def mat_vec_mul(a: Matrix, x: Column) -> Column:
    """A x."""
    return [product_sum(row, x) for row in a]


def mat_sub(a: Matrix, b: Matrix) -> Matrix:
    """A - B."""
    return [[x - y for x, y in zip(p, q)] for p, q in zip(a, b)]


def vec_add(a: Column, b: Column) -> Column:
    """a + b."""
    return [x + y for x, y in zip(a, b)]


def vec_dot(a: Column, b: Column) -> float:
    """Sum of all products, the zeros too."""
    total = 0.0
    for x, y in zip(a, b):
        total = x * y + total
    return total


# --- Solver ---------------------------------------------------------------------------------------


def row_scales(a: Matrix) -> Column | None:
    """One over the largest element of each row; None if a row is all zero."""
    scales = []
    for row in a:
        big = 0.0
        for element in row:
            if abs(element) > big:
                big = abs(element)
        if big == 0.0:
            return None
        scales.append(divide(1.0, big))
    return scales


def lu_decompose(a: Matrix) -> tuple[int, list[int]]:
    """Crout's decomposition in place; the row that took part in each interchange."""
    n = len(a)
    scales = row_scales(a)
    interchanges: list[int] = []
    if scales is None:
        return ENGINE_SINGULAR, interchanges
    for j in range(n):
        for i in range(n):
            total = a[i][j]
            for k in range(min(i, j)):
                total = total - a[i][k] * a[k][j]
            a[i][j] = total
        big = 0.0
        pivot = j
        for i in range(j, n):
            size = scales[i] * abs(a[i][j])
            if size >= big:
                big = size
                pivot = i
        if pivot != j:
            a[pivot], a[j] = a[j], a[pivot]
            scales[pivot] = scales[j]
        interchanges.append(pivot)
        if a[j][j] == 0.0:
            a[j][j] = ZERO_PIVOT
        if j != n - 1:
            factor = divide(1.0, a[j][j])
            for i in range(j + 1, n):
                a[i][j] = a[i][j] * factor
    return ENGINE_OK, interchanges


def lu_back_subst(lu: Matrix, b: Matrix, interchanges: list[int]) -> None:
    """Solves for every column of b, in place."""
    n = len(lu)
    for c in range(len(b[0])):
        first: int | None = None
        for i in range(n):
            total = b[interchanges[i]][c]
            b[interchanges[i]][c] = b[i][c]
            if first is not None:
                for j in range(first, i):
                    total = total - lu[i][j] * b[j][c]
            elif total != 0.0:
                first = i
            b[i][c] = total
        for i in reversed(range(n)):
            total = b[i][c]
            for j in range(i + 1, n):
                total = total - lu[i][j] * b[j][c]
            b[i][c] = divide(total, lu[i][i])


def mat_all_negligible(m: Matrix) -> bool:
    """No element above the spacing of doubles at 1; a not-a-number is no small one."""
    return all(abs(element) <= SPACING for row in m for element in row)


def mat_inverse(a: Matrix) -> tuple[int, Matrix]:
    """The inverse, improved at least once and at most five times."""
    n = len(a)
    identity = [[1.0 if i == j else 0.0 for j in range(n)] for i in range(n)]
    lu = [list(row) for row in a]
    x = [list(row) for row in identity]
    code, interchanges = lu_decompose(lu)
    if code != ENGINE_OK:
        return code, identity
    lu_back_subst(lu, x, interchanges)
    for _ in range(PASS_LIMIT):
        correction = mat_sub(mat_mul(a, x), identity)
        lu_back_subst(lu, correction, interchanges)
        x = mat_sub(x, correction)
        if mat_all_negligible(correction):
            break
    return ENGINE_OK, x


# --- Observations and weights ---------------------------------------------------------------------


@dataclass
class Observed:
    """A sighted point as the adjustment has it, with its residuals."""

    north: float
    east: float
    hz: float
    zenith: float
    slope_dist: float
    horiz_dist: float
    height_diff: float
    res_hz: float = 0.0
    res_horiz_dist: float = 0.0


def has_direction(sight: Observed) -> bool:
    """The direction was measured."""
    return sight.hz != VALUE_ABSENT


def has_distance(sight: Observed) -> bool:
    """All that belongs to a distance was measured, also what the plane does not need."""
    return VALUE_ABSENT not in (sight.zenith, sight.slope_dist, sight.horiz_dist,
                                sight.height_diff)


def build_weights(sights: list[Observed], sigma_angle: float, sigma_const: float,
                  sigma_prop: float) -> tuple[Column, Matrix]:
    """Observations and their weights in the plane: of each sight direction, then distance."""
    unit = sigma_angle * ARCSEC_TO_RAD
    observations: Column = []
    weights: Column = []
    for sight in sights:
        if has_direction(sight):
            observations.append(sight.hz)
            weights.append(1.0)
        if has_distance(sight):
            variance = square(sigma_const) + square(sigma_prop * sight.horiz_dist)
            observations.append(sight.horiz_dist)
            weights.append(divide(unit, variance) * unit)
    total = range(len(weights))
    return observations, [[weights[i] if i == j else 0.0 for j in total] for i in total]


def scatter_residuals(sights: list[Observed], v: Column) -> None:
    """Gives the residuals back to the sights, with the other sign."""
    k = 0
    for sight in sights:
        sight.res_hz = sight.res_horiz_dist = 0.0
        if has_direction(sight):
            sight.res_hz = -v[k]
            k += 1
        if has_distance(sight):
            sight.res_horiz_dist = -v[k]
            k += 1


# --- Steps of the adjustment ----------------------------------------------------------------------


def normal_inverse(a: Matrix, p: Matrix) -> tuple[int, Matrix]:
    """(A^T P A)^-1."""
    return mat_inverse(mat_mul_trans_a(a, mat_mul(p, a)))


def solution_vector(a: Matrix, qxx: Matrix, p: Matrix, l: Column) -> Column:
    """-Qxx A^T P l."""
    x = mat_vec_mul(mat_mul(mat_mul_trans_b(qxx, a), p), l)
    return [element * -1.0 for element in x]


def mat_vec_add(a: Matrix, l: Column, x: Column) -> Column:
    """l + A x."""
    return vec_add(l, mat_vec_mul(a, x))


def quadratic_form(p: Matrix, v: Column) -> float:
    """v^T P v."""
    return vec_dot(v, mat_vec_mul(p, v))
