"""Pretty-printers of CorvexMaths for gdb: a summary on one line, and the elements as children.

gdb loads this file by itself beside an installed library, as libCorvexMaths.so.<version>-gdb.py. By hand it is

    (gdb) source debuggers/corvexmaths_gdb.py

`print/r` shows the bare fields. Objects that are not yet, or no longer, valid are told as such and never walked.

Programs leave the description of the library's classes to the library, which is installed without; so an installed one
brings it in a file of its own, CorvexMaths/types.debug beside the library, that is read here.
"""

import os
import re
import struct

import gdb
import gdb.printing

NAMESPACES = re.compile(r"Halmont::Orrin::Corvex(?:Maths|Utilities)::")
CLASS_NAME = re.compile(r"^Halmont::Orrin::Corvex(?:Maths|Utilities)::(\w+)(?:<.*>)?$", re.DOTALL)
KNOT_TYPES = {0: "uniform", 1: "clamped"}
GENERAL, SYMMETRIC = 11, -2


def name_of(value):
    """The type without its namespaces."""
    return NAMESPACES.sub("", str(value.type.strip_typedefs().unqualified()))


def number(value):
    """The shortest decimal that reads back as the same scalar."""
    real = float(value)
    if value.type.strip_typedefs().sizeof == 4:
        for digits in range(6, 10):
            text = "%.*g" % (digits, real)
            # Rounding up can leave the range of a float, which pack refuses.
            try:
                if struct.pack("f", float(text)) == struct.pack("f", real):
                    return text
            except OverflowError:
                pass
    text = repr(real)
    return text[:-2] if text.endswith(".0") else text


def fields_of(value):
    """The names of the fields that an object holds, without those of its bases."""
    return [field.name for field in value.type.strip_typedefs().fields()
            if hasattr(field, "bitpos") and not field.is_base_class and not field.artificial]


def tuple_of(value):
    """The components of a vector."""
    return "(" + ", ".join(number(value[axis]) for axis in fields_of(value)) + ")"


def is_readable(pointer, count):
    """Whether the first and the last byte of an array can be read; so can one of no elements, wherever it is."""
    size = count * pointer.type.target().sizeof
    try:
        pointer + count  # fails for a type that is only declared, for want of debug information
        for place in (0, size - 1) if size > 0 else ():
            gdb.selected_inferior().read_memory(int(pointer) + place, 1)
    except (gdb.error, OverflowError):
        return False
    return True


def array_at(pointer, count):
    """The elements from a pointer on as one value, which gdb prints as an array."""
    return pointer.cast(pointer.type.target().array(count - 1).pointer()).dereference()


def has_size(pointer, *sizes):
    """Whether the sizes of an object can be true, and the first of so many elements be read."""
    counts = [int(size) for size in sizes]
    return min(counts) >= 0 and is_readable(pointer, counts[0])


class Summary:
    """A class that its summary tells entirely."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return self.describe()


class Vector(Summary):
    def describe(self):
        return tuple_of(self.value)


class Complex(Summary):
    def describe(self):
        imaginary = number(self.value["imaginary"])
        sign = "" if imaginary.startswith("-") else "+"
        return "%s%s%si" % (number(self.value["real"]), sign, imaginary)


class Quaternion(Summary):
    def describe(self):
        w, x, y, z = (number(self.value[part]) for part in "wxyz")
        return "w %s, (%s, %s, %s)" % (w, x, y, z)


class Int128(Summary):
    def describe(self):
        return str((int(self.value["hi"]) << 64) + int(self.value["lo"]))


class Edge(Summary):
    def describe(self):
        return "%s to %s" % tuple(tuple_of(self.value["Vertex"][i]) for i in (0, 1))


class Triangle(Summary):
    def describe(self):
        return "%s, %s, %s" % tuple(tuple_of(self.value["corners"][i]) for i in (0, 1, 2))


class Sphere(Summary):
    def describe(self):
        centre = ", ".join(number(self.value["sphere"][axis]) for axis in "xyz")
        return "centre (%s), radius %s" % (centre, number(self.value["sphere"]["w"]))


class Fields(Summary):
    """A primitive: its vectors and scalars, each with its name."""

    def describe(self):
        return ", ".join(self.describe_field(field) for field in fields_of(self.value))

    def describe_field(self, field):
        value = self.value[field]
        is_scalar = value.type.strip_typedefs().code == gdb.TYPE_CODE_FLT
        return "%s %s" % (field, number(value) if is_scalar else tuple_of(value))


class Box(Summary):
    def describe(self):
        low, high, limit = self.value["minimum"], self.value["maximum"], float(self.value["limit"])
        if all(float(low[axis]) == limit and float(high[axis]) == -limit for axis in "xyz"):
            return "empty"
        return ", ".join("%s %s .. %s" % (axis, number(low[axis]), number(high[axis])) for axis in "xyz")


class Walked(Summary):
    """A class with elements. Derived classes tell whether it is valid, what it is, and its elements."""

    def to_string(self):
        return name_of(self.value) + (" " + self.describe() if self.can_be_walked() else ", not valid")

    def children(self):
        return self.walk() if self.can_be_walked() else iter(())

    def can_be_walked(self):
        try:
            return self.is_valid()
        except gdb.error:
            # What a part of it refers to is gone, or a type is only declared.
            return False


class List(Walked):
    def is_valid(self):
        return int(self.value["count"]) <= int(self.value["capacity"]) and \
            has_size(self.value["storage"], self.value["count"])

    def describe(self):
        return "of %d, capacity %d" % (self.value["count"], self.value["capacity"])

    def walk(self):
        for i in range(int(self.value["count"])):
            yield "[%d]" % i, self.value["storage"][i]


class PointSet(List):
    def describe(self):
        return "of %d, box %s" % (self.value["count"], Box(self.value["boundingBox"]).describe())


class Parameterization(PointSet):
    def describe(self):
        return "%s, length %s" % (super().describe(), number(self.value["length"]))

    def walk(self):
        yield from super().walk()
        yield "parameters", self.value["parameters"]


class Spline(PointSet):
    def describe(self):
        knot_type = KNOT_TYPES.get(int(self.value["type"]), "unknown")
        return "%s, order %d, %s" % (super().describe(), self.value["order"], knot_type)

    def walk(self):
        yield from super().walk()
        yield "knots", self.value["knots"]


class Table(Walked):
    """What has columns or rows that stand in an array of pointers."""

    def walk_lines(self, lines, line_count, length):
        for i in range(line_count if length > 0 else 0):
            yield "[%d]" % i, array_at(lines[i], length) if is_readable(lines[i], length) else "not valid"


class Map(Table):
    def is_valid(self):
        return has_size(self.value["columns"], self.value["width"])

    def describe(self):
        return "of %d columns and %d rows" % (self.value["width"], self.value["height"])

    def walk(self):
        return self.walk_lines(self.value["columns"], int(self.value["width"]), int(self.value["height"]))


class Matrix(Table):
    def is_valid(self):
        return has_size(self.value["rows"], self.value["m"])

    def describe(self):
        return "%d by %d" % (self.value["m"], self.value["n"])

    def walk(self):
        return self.walk_lines(self.value["rows"], int(self.value["m"]), int(self.value["n"]))


class FixedMatrix(Walked):
    def is_valid(self):
        return True

    def describe(self):
        return "%d by %d" % (self.order(), self.order())

    def order(self):
        size = self.value["elements"].type.sizeof // self.value["elements"].type.target().sizeof
        return int(round(size ** 0.5))

    def walk(self):
        for r in range(self.order()):
            yield "[%d]" % r, array_at(self.value["elements"][r * self.order()].address, self.order())


class RowMatrix(Walked):
    """Compressed rows: each goes on to the start of the next that has elements."""

    def is_valid(self):
        stored = int(self.value["elementCount"])
        rows = int(self.value["rowCount"])
        if rows == 0 and not int(self.value["rowStarts"]):
            return stored == 0
        return has_size(self.value["values"], stored, self.value["columnCount"]) and \
            stored <= int(self.value["capacity"]) and is_readable(self.value["columnIndices"], stored) and \
            has_size(self.value["rowStarts"], rows) and is_readable(self.value["rowStarts"], rows + 1)

    def describe(self):
        kind = {GENERAL: "general", SYMMETRIC: "symmetric"}.get(int(self.value["matrixType"]), "of unknown type")
        return "%d by %d, %s, %d of %d elements" % tuple(
            [self.value["rowCount"], self.value["columnCount"], kind, self.value["elementCount"],
             self.value["capacity"]])

    def walk(self):
        starts = (int(self.value["rowStarts"][row]) for row in range(int(self.value["rowCount"])))
        stored = int(self.value["elementCount"])
        # An empty row starts past all elements.
        begins = [(start, row) for row, start in enumerate(starts) if 0 <= start < stored]
        ends = [start for start, _ in begins[1:]] + [stored]
        for (begin, row), end in zip(begins, ends):
            for i in range(begin, end):
                yield "[%d, %d]" % (row, self.value["columnIndices"][i]), self.value["values"][i]


class ColumnMatrix(Walked):
    def is_valid(self):
        return has_size(self.value["columnValues"], self.value["columnCount"]) and \
            is_readable(self.value["columnRows"], int(self.value["columnCount"]))

    def describe(self):
        return "%d by %d, %d elements" % (self.value["rowCount"], self.value["columnCount"],
                                          self.value["elementCount"])

    def walk(self):
        for c in range(int(self.value["columnCount"])):
            values, rows = self.value["columnValues"][c], self.value["columnRows"][c]
            for (_, value), (_, row) in zip(List(values).children(), List(rows).children()):
                yield "[%d, %d]" % (row, c), value


class Fragment(Walked):
    def is_valid(self):
        return all(List(self.value[part]).can_be_walked() for part in ("values", "rows", "columns"))

    def describe(self):
        return "of %d" % self.value["values"]["count"]

    def walk(self):
        lists = (List(self.value[part]).walk() for part in ("rows", "columns", "values"))
        for (_, row), (_, column), (_, value) in zip(*lists):
            yield "[%d, %d]" % (row, column), value


PRINTERS = {
    "TList": List, "TMap": Map,
    "TVector2": Vector, "TVector3": Vector, "TVector4": Vector, "TComplex": Complex, "TQuaternion": Quaternion,
    "TMatrix2x2": FixedMatrix, "TMatrix3x3": FixedMatrix, "TMatrix4x4": FixedMatrix, "TMatrixMxN": Matrix,
    "TMatrixFragment": Fragment, "TCCSMatrixMxN": ColumnMatrix, "TCRSMatrixMxN": RowMatrix,
    "TBox": Box, "TEdge2": Edge, "TEdge3": Edge, "TLine2": Fields, "TLine3": Fields, "TPlane": Fields,
    "TTriangle2": Triangle, "TTriangle3": Triangle, "TCircle2": Fields, "TCircle3": Fields, "TSphere": Sphere,
    "TCone": Fields, "TCylinder": Fields,
    "TPointSet": PointSet, "TPolygon": PointSet, "TParameterization": Parameterization, "TBSpline": Spline,
    "Int128": Int128,
}


class Lookup(gdb.printing.PrettyPrinter):
    """Finds the printer of a value by its class."""

    def __init__(self):
        super().__init__("CorvexMaths")

    def __call__(self, value):
        name = CLASS_NAME.match(value.type.strip_typedefs().unqualified().name or "")
        printer = PRINTERS.get(name.group(1)) if name else None
        # A type that is only declared, for want of debug information, has nothing to read.
        return printer(value) if printer and value.type.strip_typedefs().fields() else None


gdb.printing.register_pretty_printer(gdb.current_objfile(), Lookup(), replace=True)


def read_types():
    """Reads the description of the classes, once. It holds types alone, so the address where it is put is all the same."""
    library = gdb.current_objfile()
    if library is None:
        return
    types = os.path.join(os.path.dirname(os.path.realpath(library.filename)), "CorvexMaths", "types.debug")
    if os.path.exists(types) and all(objfile.filename != types for objfile in gdb.objfiles()):
        gdb.execute("add-symbol-file " + types.replace(" ", "\\ "), False, True)


read_types()
