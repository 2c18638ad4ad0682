#!/usr/bin/env python3
"""Writes sets of points with the values that the fits must give, computed with 60 digits.

    reference.py >reference.txt

Each set is a feature, whole or in part, with a form error, somewhere in space and of some size; its points are doubles.
The values are the minimum of the sum of squared distances of just these points: Gauss-Newton steps from the feature that
the points were made of, with derivatives by central differences, so that no formula is shared with the library. Beside
each value stands its sensitivity, the root of the diagonal of the inverse normal matrix.

A set in the file:

    set FEATURE GROUP NAME                  FEATURE as below, NAME tells arc, scale and offset
    size S                                  the unit in which errors of lengths are told
    point X Y [Z] [X Y Z]                   two points for the alignment: measured, nominal
    value NAME KIND HIGH LOW SENSITIVITY    KIND is length, angle or spread; HIGH + LOW is the value to 22 digits
"""
import sys

from mpmath import cos, matrix, mp, mpf, pi, sin, sqrt, tan

mp.dps = 60


class Random:
    """An integer generator, so that the sets are the same everywhere."""

    def __init__(self, seed):
        self.state = seed * 2654435761 % 2**64 | 1

    def uniform(self, low=-1.0, high=1.0):
        self.state = (self.state * 6364136223846793005 + 1442695040888963407) % 2**64
        return low + (high - low) * ((self.state >> 11) / 2.0**53)


def dot(a, b):
    return sum(x * y for x, y in zip(a, b))


def cross(a, b):
    return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]]


def unit(a):
    length = sqrt(dot(a, a))
    return [x / length for x in a]


def frame(direction):
    w = unit([mpf(x) for x in direction])
    least = min(range(3), key=lambda k: abs(w[k]))
    u = unit(cross([mpf(k == least) for k in range(3)], w))
    return [u, cross(w, u), w]


def signed(direction):
    """The direction or its opposite: the component of the greatest absolute value is positive."""
    return direction if max(direction, key=abs) > 0 else [-x for x in direction]


class Feature:
    """A feature in the frame that made its points; params are small moves of it. The subclass gives the distances of a
    point, in one or two components, and the values to tell."""

    def __init__(self, origin, axes, radius=0, angle=0):
        self.origin = [mpf(x) for x in origin]
        self.axes = axes
        self.radius = mpf(radius)
        self.angle = mpf(angle)

    def axis(self, params, tilt):
        u, v, w = self.axes
        return unit([w[k] + params[tilt] * u[k] + params[tilt + 1] * v[k] for k in range(3)])

    def place(self, params, moves):
        return [self.origin[k] + sum(params[i] * self.axes[i][k] for i in range(moves)) for k in range(3)]


class Line2(Feature):
    count = 2

    def distances(self, p, x):
        t = x[1]
        n = unit([-self.axes[0][1] - t * self.axes[0][0], self.axes[0][0] - t * self.axes[0][1]])
        o = [self.origin[k] + x[0] * [-self.axes[0][1], self.axes[0][0]][k] for k in range(2)]
        return [dot([p[k] - o[k] for k in range(2)], n)]

    def values(self, points, x):
        a = self.axes[0]
        d = signed(unit([a[0] - x[1] * a[1], a[1] + x[1] * a[0]]))
        o = [self.origin[k] + x[0] * [-a[1], a[0]][k] for k in range(2)]
        c = mean(points)
        t = dot([c[k] - o[k] for k in range(2)], d)
        return {"origin.x": o[0] + t * d[0], "origin.y": o[1] + t * d[1], "direction.x/": d[0], "direction.y/": d[1]}


class Line3(Feature):
    count = 4

    def distances(self, p, x):
        w = self.axis(x, 2)
        d = [a - b for a, b in zip(p, self.place(x, 2))]
        t = dot(d, w)
        rest = [d[k] - t * w[k] for k in range(3)]
        return rest

    def values(self, points, x):
        w = signed(self.axis(x, 2))
        o = self.place(x, 2)
        t = dot([a - b for a, b in zip(mean(points), o)], w)
        return {**named("origin", [o[k] + t * w[k] for k in range(3)]), **named("direction", w, "/")}


class Plane(Feature):
    count = 3

    def distances(self, p, x):
        w = self.axis(x, 1)
        o = [self.origin[k] + x[0] * self.axes[2][k] for k in range(3)]
        return [dot([a - b for a, b in zip(p, o)], w)]

    def values(self, points, x):
        w = signed(self.axis(x, 1))
        o = [self.origin[k] + x[0] * self.axes[2][k] for k in range(3)]
        c = mean(points)
        t = dot([a - b for a, b in zip(c, o)], w)
        return {**named("point", [c[k] - t * w[k] for k in range(3)]), **named("normal", w, "/")}


class Round(Feature):
    def distances(self, p, x):
        c = [self.origin[k] + x[k] for k in range(len(p))]
        d = [a - b for a, b in zip(p, c)]
        return [sqrt(dot(d, d)) - self.radius - x[len(p)]]

    def values(self, points, x):
        d = len(points[0])
        return {**named("centre", [self.origin[k] + x[k] for k in range(d)]), "radius": self.radius + x[d]}


class Circle2(Round):
    count = 3


class Sphere(Round):
    count = 4


class Circle3(Feature):
    count = 6

    def distances(self, p, x):
        w = self.axis(x, 3)
        d = [a - b for a, b in zip(p, self.place(x, 3))]
        t = dot(d, w)
        rest = [d[k] - t * w[k] for k in range(3)]
        return [sqrt(dot(rest, rest)) - self.radius - x[5], t]

    def values(self, points, x):
        return {
            **named("centre", self.place(x, 3)),
            **named("normal", signed(self.axis(x, 3)), "/"),
            "radius": self.radius + x[5],
        }


class Cylinder(Feature):
    count = 5

    def about(self, p, x):
        w = self.axis(x, 2)
        d = [a - b for a, b in zip(p, self.place(x, 2))]
        t = dot(d, w)
        rest = [d[k] - t * w[k] for k in range(3)]
        return sqrt(dot(rest, rest)), t

    def distances(self, p, x):
        return [self.about(p, x)[0] - self.radius - x[4]]

    def values(self, points, x):
        heights = [self.about(p, x)[1] for p in points]
        w = self.axis(x, 2)
        o = self.place(x, 2)
        middle = (min(heights) + max(heights)) / 2
        return {
            **named("centre", [o[k] + middle * w[k] for k in range(3)]),
            **named("axis", signed(w), "/"),
            "radius": self.radius + x[4],
            "height": max(heights) - min(heights),
        }


class Cone(Cylinder):
    count = 6

    def distances(self, p, x):
        r, t = self.about(p, x)
        h = self.angle + x[5]
        return [(r - self.radius - x[4]) * cos(h) - t * sin(h)]

    def values(self, points, x):
        w = self.axis(x, 2)
        o = self.place(x, 2)
        h = self.angle + x[5]
        t = dot([a - b for a, b in zip(mean(points), o)], w)
        radius = self.radius + x[4]
        tip = -radius / tan(h)
        height = max(self.about(p, x)[1] for p in points) - tip
        return {
            **named("point", [o[k] + t * w[k] for k in range(3)]),
            **named("axis", w, "/"),
            "radius": radius + t * tan(h),
            "halfAngle/": h,
            **named("apex", [o[k] + tip * w[k] for k in range(3)]),
            "base": height * tan(h),
            "height": height,
        }


class Motion(Feature):
    """The rigid motion that carries measured points to nominal ones: a turn by the vector x[0..2], in the form of
    Rodrigues, on top of the one that made the points, and the move x[3..5]."""

    count = 6

    def rotation(self, x):
        # (I - S)^-1 (I + S) is a rotation for every skew S; S has half the tangents.
        a, b, c = x[:3]
        n = 1 + a * a + b * b + c * c
        r = matrix(
            [
                [1 + a * a - b * b - c * c, 2 * (a * b - c), 2 * (a * c + b)],
                [2 * (a * b + c), 1 - a * a + b * b - c * c, 2 * (b * c - a)],
                [2 * (a * c - b), 2 * (b * c + a), 1 - a * a - b * b + c * c],
            ]
        ) / n
        return r * self.axes

    def distances(self, pair, x):
        measured, nominal = pair[:3], pair[3:]
        moved = self.rotation(x) * matrix(measured)
        return [moved[k] + self.origin[k] + x[3 + k] - nominal[k] for k in range(3)]

    def values(self, pairs, x):
        r = self.rotation(x)
        return {
            **{f"rotation{i}{k}/": r[i, k] for i in range(3) for k in range(3)},
            **named("translation", [self.origin[k] + x[3 + k] for k in range(3)]),
        }


def named(name, vector, mark=""):
    return {f"{name}.{'xyz'[k]}{mark}": x for k, x in enumerate(vector)}


def mean(points):
    return [sum(p[k] for p in points) / len(points) for k in range(len(points[0]))]


def derivatives(function, x, unit_of):
    """Of a list of numbers, by central differences."""
    columns = []
    for k in range(len(x)):
        h = mpf(10) ** -20 * unit_of[k]
        ahead, behind = list(x), list(x)
        ahead[k] += h
        behind[k] -= h
        columns.append([(a - b) / (2 * h) for a, b in zip(function(ahead), function(behind))])
    return columns


def solve(feature, points, size):
    """The parameters of the least squares, and R of the derivatives there."""
    points = [[mpf(x) for x in p] for p in points]
    x = [mpf(0)] * feature.count
    angles = {Line2: [1], Line3: [2, 3], Plane: [1, 2], Circle3: [3, 4], Cylinder: [2, 3], Cone: [2, 3, 5], Motion: [0, 1, 2]}
    unit_of = [mpf(1) if k in angles.get(type(feature), []) else mpf(size) for k in range(feature.count)]

    def all_distances(params):
        return [d for p in points for d in feature.distances(p, params)]

    jacobian = matrix(1)
    for step in range(200):
        r = all_distances(x)
        columns = derivatives(all_distances, x, unit_of)
        jacobian = matrix(len(r), feature.count)
        for k, column in enumerate(columns):
            for i, value in enumerate(column):
                jacobian[i, k] = value * unit_of[k]
        normal = jacobian.T * jacobian
        s = mp.lu_solve(normal, -(jacobian.T * matrix(r)))
        x = [a + b * c for a, b, c in zip(x, s, unit_of)]
        if max(abs(a) for a in s) < mpf(10) ** -34:
            break
    else:
        sys.exit("no convergence")
    return points, x, unit_of, normal


def quantities(feature, points, size):
    points, x, unit_of, normal = solve(feature, points, size)
    values = feature.values(points, x)
    names = list(values)
    columns = derivatives(lambda y: list(feature.values(points, y).values()), x, unit_of)
    inverse = normal**-1
    for i, name in enumerate(names):
        g = matrix([columns[k][i] * unit_of[k] for k in range(feature.count)])
        yield name.rstrip("/"), "angle" if name.endswith("/") else "length", values[name], sqrt(abs((g.T * inverse * g)[0]))
    parts = [feature.distances(p, x) for p in points]
    lengths = [d[0] if len(d) == 1 else sqrt(dot(d, d)) * (-1 if type(feature) is Circle3 and d[0] < 0 else 1) for d in parts]
    yield "rms", "spread", sqrt(sum(d * d for d in lengths) / len(lengths)), 0
    if isinstance(feature, Motion):
        yield "largest", "spread", max(lengths), 0
    else:
        yield "peakToValley", "spread", 2 * max(lengths) if type(feature) is Line3 else max(lengths) - min(lengths), 0


def make(kind, name, group, seed, arc=360.0, scale=1.0, offset=0.0, form=1e-3, half=30.0, count=12):
    """One set: the truth, its points as doubles, and the values."""
    random = Random(seed)
    axes = frame([random.uniform() for _ in range(3)])
    origin = [offset * scale * random.uniform(0.5, 1.0) for _ in range(3)]
    flat = kind in (Line2, Circle2)
    if kind is Line2:
        axes = [unit([mpf(random.uniform()), mpf(random.uniform())])]
    if kind in (Circle2, Sphere) :
        axes = frame([0, 0, 1]) if flat else axes
    radius = scale * 1.0
    angle = mpf(half) * pi / 180
    points = []
    for i in range(count):
        turn = mpf(arc) * (i + mpf(random.uniform(-0.3, 0.3))) / count * pi / 180
        height = mpf(scale) * mpf(random.uniform())
        bump = mpf(scale) * mpf(form) * mpf(random.uniform())
        other = mpf(scale) * mpf(form) * mpf(random.uniform())
        c, s = cos(turn), sin(turn)
        if kind is Line2:
            a = axes[0]
            local = [height * a[k] + bump * [-a[1], a[0]][k] for k in range(2)]
            points.append([float(local[k] + origin[k]) for k in range(2)])
            continue
        if kind is Line3:
            x, y, z = bump, other, height
        elif kind is Plane:
            x, y, z = mpf(scale) * mpf(random.uniform()), height * mpf(arc) / 360, bump
        elif kind is Circle2 or kind is Circle3:
            x, y, z = (radius + bump) * c, (radius + bump) * s, other
        elif kind is Sphere:
            # A cap of the angle `arc` across, the whole sphere at 360.
            t = (1 - cos(angle_of(arc) / 2)) * mpf((i + 0.5) / count)
            ring = sqrt(1 - (1 - t) ** 2)
            long = pi * mpf(2.399963)/pi * i
            x, y, z = [(radius + bump) * q for q in (ring * cos(long), ring * sin(long), 1 - t)]
        elif kind is Cylinder:
            x, y, z = (radius + bump) * c, (radius + bump) * s, height
        else:
            # The generator through height 0 at the radius; heights stay this side of the apex.
            along = height * mpf(0.9) * min(mpf(1), 1 / sin(angle)) if half < 85 else height * mpf(0.9)
            r = radius + along * sin(angle) + bump * cos(angle)
            x, y, z = r * c, r * s, along * cos(angle) - bump * sin(angle)
        if kind is Circle2:
            points.append([float(x + origin[0]), float(y + origin[1])])
        else:
            points.append([float(x * axes[0][k] + y * axes[1][k] + z * axes[2][k] + origin[k]) for k in range(3)])
    return kind(origin, axes, radius, angle), group, name, points, scale


def angle_of(degrees):
    return mpf(degrees) * pi / 180


def make_motion(name, group, seed, shape, scale=1.0, offset=0.0, form=1e-3, count=12):
    random = Random(seed)
    turn = Motion([0, 0, 0], mp.eye(3))
    rotation = turn.rotation([mpf(2 * random.uniform()) for _ in range(3)])
    move = [mpf(offset * scale * random.uniform()) for _ in range(3)]
    pairs = []
    for _ in range(count):
        measured = [float(scale * (shape[k] * random.uniform() + offset)) for k in range(3)]
        image = rotation * matrix([mpf(x) for x in measured])
        error = [mpf(scale) * mpf(form) * min(1, min(x for x in shape if x > 0) * 10) * mpf(random.uniform()) for _ in range(3)]
        pairs.append(measured + [float(image[k] + move[k] + error[k]) for k in range(3)])
    return Motion(move, rotation), group, name, pairs, scale


def sets():
    seed = 1
    for kind in (Line2, Line3, Plane, Circle2, Circle3, Sphere, Cylinder, Cone):
        arcs = (360.0,) if kind in (Line2, Line3) else (360.0, 90.0, 30.0, 10.0)
        for arc in arcs:
            group = "full" if arc == 360.0 else f"arc {arc:g}"
            # What an arc of 10 degrees tells of a curvature drowns in a greater form error.
            form = {360.0: 1e-3, 90.0: 1e-4, 30.0: 1e-5, 10.0: 1e-6}[arc] if kind not in (Line2, Line3, Plane) else 1e-3
            for scale, offset in ((1.0, 0.0), (1e-6, 0.0), (1e6, 0.0), (1e-3, 1e3), (1.0, 1e5)):
                name = f"{arc:g} degrees, size {scale:g}, {offset:g} sizes away"
                where = group if offset < 1e3 else "far" if offset > 1e4 else "small part in metres"
                yield make(kind, name, where, seed, arc, scale, offset, form)
                seed += 1
        yield make(kind, "form error of 5 percent", "form error", seed, form=0.05)
        yield make(kind, "form error of 1e-9", "form error", seed + 1, form=1e-9)
        seed += 2
    for half in (0.1, 1.0, 10.0, 45.0, 75.0, 87.0):
        form = 1e-5 if half in (0.1, 87.0) else 1e-4
        for scale, offset in ((1.0, 0.0), (1e-3, 1e3)):
            yield make(Cone, f"half angle {half:g}, size {scale:g}, {offset:g} sizes away", "half angle", seed, 360.0, scale, offset, form, half)
            seed += 1
    for shape, name in (((1, 1, 1), "solid"), ((1, 1, 0), "flat"), ((1, 1, 1e-6), "thin plate"), ((1, 1e-3, 1e-3), "rod")):
        for scale, offset, count in ((1.0, 0.0, 12), (1e-6, 0.0, 12), (1e6, 0.0, 12), (1.0, 1e3, 12), (1.0, 0.0, 3)):
            yield make_motion(f"{name}, size {scale:g}, {offset:g} sizes away, {count} points", name, seed, shape, scale, offset, count=count)
            seed += 1


def main():
    for feature, group, name, points, size in sets():
        print(f"set {type(feature).__name__} {group.replace(' ', '_')} {name.replace(' ', '_')}")
        print(f"size {size!r}")
        for p in points:
            print("point", *map(repr, p))
        for what, kind, value, sensitivity in quantities(feature, points, size):
            high = float(value)
            print("value", what, kind, repr(high), f"{float(value - mpf(high)):.6g}", f"{float(sensitivity):.3g}")
        sys.stdout.flush()


if __name__ == "__main__":
    main()
