#pragma once

/// Printing: `operator<<` for the values of the library and, where the standard library has it, `std::formatter`.
///
/// No other header includes this one, so only programs that print pay for it. Every number is printed at the stream's
/// precision, width, fill and flags; at a precision of `max_digits10` it reads back to the same bits. The style is
/// compact, without a line break:
///
/// | value | looks like |
/// |---|---|
/// | vectors, complex numbers, quaternions, pairs | `(1, 2, 3)` |
/// | lists, point sets, polygons, spirals; corners of edges and flat triangles | `[(0, 0), (1, 0)]` |
/// | dense matrices, by rows | `[[1, 0], [0, 1]]` |
/// | what has named parts: boxes, lines, circles, splines ... | `{centre: (0, 0), radius: 1}` |
/// | answers of the robust family, if there is one | `{status: done, plane: {point: ..., normal: ...}, rms: 0.1 ...}` |
/// | and if there is none | `{status: too few points}` |
/// | sparse matrices, each element as row, column and value | `{rows: 2, columns: 2, elements: [(0, 1, 5)]}` |
/// | Int128 | its decimal digits |
///
/// The elements of a list and the members of a pair may be of any class that can be printed itself.

#include <CorvexMaths/CorvexMaths.h>

#include <ostream>
#ifdef __has_include
#if __has_include(<version>)
#include <version>
#endif
#endif
#ifdef __cpp_lib_format
#include <format>
#include <string>
#include <string_view>
#endif

/// @cond
// How values are written. A sink takes a text as it is by `Text` and a number in its format by `Number`; each overload
// of `Write` writes a value of one kind to any sink.
namespace Halmont::Orrin::CorvexMaths::Printing
{

// Writes to a stream. The width that the stream is set to counts for each number and not for the text between.
template <class Char, class Traits>
class StreamSink
{
public:
    // Takes the width off the stream.
    explicit StreamSink(std::basic_ostream<Char, Traits>& target) : stream(target), width(target.width(0)) {}

    // Writes a text.
    void Text(const char* text) { stream << text; }

    // Writes a number, or another value that the stream takes.
    template <class N>
    void Number(const N& number)
    {
        stream.width(width);
        stream << number;
        stream.width(0);
    }

private:
    std::basic_ostream<Char, Traits>& stream;
    std::streamsize width;
};

// Writes a value by its `Write` where it has one, otherwise as a number.
template <class Sink, class X>
void Put(Sink& sink, const X& value);

// Writes values one after the other between brackets.
template <class Sink, class Iterator>
void Sequence(Sink& sink, const char* open, Iterator first, unsigned int count, const char* close)
{
    sink.Text(open);
    for (unsigned int i = 0; i < count; ++i, ++first) {
        if (i != 0) sink.Text(", ");
        Put(sink, *first);
    }
    sink.Text(close);
}

// Writes named parts in braces: the names and values in turn.
template <class Sink, class First, class... Rest>
void Parts(Sink& sink, const char* name, const First& value, const Rest&... rest)
{
    sink.Text(name);
    sink.Text(": ");
    Put(sink, value);
    if constexpr (sizeof...(rest) != 0) {
        sink.Text(", ");
        Parts(sink, rest...);
    }
}
template <class Sink, class... Values>
void Braced(Sink& sink, const Values&... namesAndValues)
{
    sink.Text("{");
    Parts(sink, namesAndValues...);
    sink.Text("}");
}

// Vectors, complex numbers and quaternions.
template <class Sink, class V, class T>
void Write(Sink& sink, const VectorOperations<V, T>& vector)
{
    Sequence(sink, "(", static_cast<const T*>(vector), sizeof(V) / sizeof(T), ")");
}
template <class Sink, class C, class T>
void Write(Sink& sink, const HypercomplexOperations<C, T>& number)
{
    Sequence(sink, "(", static_cast<const T*>(number), sizeof(C) / sizeof(T), ")");
}

// Dense matrices.
template <class T>
struct Row
{
    const T* elements;
    unsigned int count;
};
template <class Sink, class T>
void Write(Sink& sink, const Row<T>& row)
{
    Sequence(sink, "[", row.elements, row.count, "]");
}
template <class Matrix>
struct RowIterator
{
    const Matrix& matrix;
    unsigned int row = 0;
    void operator++() { ++row; }
    auto operator*() const { return Row<std::decay_t<decltype(matrix[0][0])>>{matrix[row], matrix.GetN()}; }
};
template <class Sink, class M, class T, unsigned int N>
void Write(Sink& sink, const SquareMatrixOperations<M, T, N>& matrix)
{
    Sequence(sink, "[", RowIterator<SquareMatrixOperations<M, T, N>>{matrix}, N, "]");
}
template <class Sink, class T>
void Write(Sink& sink, const TMatrixMxN<T>& matrix)
{
    Sequence(sink, "[", RowIterator<TMatrixMxN<T>>{matrix}, matrix.GetM(), "]");
}

// Containers, and what is a list of points.
template <class Sink, class A, class B>
void Write(Sink& sink, const TPair<A, B>& pair)
{
    sink.Text("(");
    Put(sink, pair.first);
    sink.Text(", ");
    Put(sink, pair.second);
    sink.Text(")");
}
template <class Sink, class E>
void Write(Sink& sink, const TList<E>& list)
{
    Sequence(sink, "[", static_cast<const E*>(list.GetStream()), list.GetCount(), "]");
}
template <class Sink, class T, template <class> class V>
void Write(Sink& sink, const TParameterization<T, V>& line)
{
    Braced(sink, "length", line.GetLength(), "points", static_cast<const TList<V<T>>&>(line));
}
template <class Sink, class T, template <class> class V>
void Write(Sink& sink, const TBSpline<T, V>& spline)
{
    sink.Text(spline.GetType() == Clamped ? "{type: Clamped, " : "{type: Uniform, ");
    Parts(sink, "order", spline.GetOrder(), "points", static_cast<const TList<V<T>>&>(spline));
    sink.Text("}");
}
template <class Sink, class T>
void Write(Sink& sink, const TSpiral3<T>& spiral)
{
    Write(sink, spiral.points);
}

// Sparse matrices.
template <class Sink, class T>
class ElementWriter
{
public:
    explicit ElementWriter(Sink& target) : sink(target) {}

    void operator()(int row, int column, const T& value)
    {
        sink.Text(first ? "(" : ", (");
        first = false;
        Put(sink, row);
        sink.Text(", ");
        Put(sink, column);
        sink.Text(", ");
        Put(sink, value);
        sink.Text(")");
    }

private:
    Sink& sink;
    bool first = true;
};
template <class Sink, class T>
void Write(Sink& sink, const TMatrixFragment<T>& fragment)
{
    ElementWriter<Sink, T> writeElement(sink);
    sink.Text("[");
    for (unsigned int i = 0; i < fragment.values.GetCount(); ++i)
        writeElement(fragment.rows[i], fragment.columns[i], fragment.values[i]);
    sink.Text("]");
}
template <class Sink, class T>
void Write(Sink& sink, const TCCSMatrixMxN<T>& matrix)
{
    sink.Text("{");
    Parts(sink, "rows", matrix.rowCount, "columns", matrix.columnCount);
    sink.Text(", elements: [");
    ElementWriter<Sink, T> writeElement(sink);
    for (int column = 0; column < matrix.columnCount; ++column) {
        const TList<T>& values = matrix.columnValues[column];
        for (unsigned int i = 0; i < values.GetCount(); ++i)
            writeElement(matrix.columnRows[column][i], column, values[i]);
    }
    sink.Text("]}");
}
template <class Sink, class T>
void Write(Sink& sink, const TCRSMatrixMxN<T>& matrix)
{
    sink.Text("{");
    Parts(sink, "rows", matrix.rowCount, "columns", matrix.columnCount);
    sink.Text(", elements: [");
    ElementWriter<Sink, T> writeElement(sink);
    int row = -1;
    int next = 0; // the row that starts after the present one
    for (int i = 0; i < matrix.elementCount; ++i) {
        for (; next < matrix.rowCount && (matrix.rowStarts[next] <= i || matrix.rowStarts[next] == matrix.emptyRow);
             ++next)
            if (matrix.rowStarts[next] <= i) row = next;
        writeElement(row, matrix.columnIndices[i], matrix.values[i]);
    }
    sink.Text("]}");
}

// Primitives.
template <class Sink, class T>
void Write(Sink& sink, const TBox<T>& box)
{
    Braced(sink, "minimum", box.minimum, "maximum", box.maximum);
}
template <class Sink, class T>
void Write(Sink& sink, const TEdge2<T>& edge)
{
    Sequence(sink, "[", edge.Vertex, 2, "]");
}
template <class Sink, class T>
void Write(Sink& sink, const TEdge3<T>& edge)
{
    Sequence(sink, "[", edge.Vertex, 2, "]");
}
template <class Sink, class T>
void Write(Sink& sink, const TLine2<T>& line)
{
    Braced(sink, "origin", line.origin, "direction", line.direction);
}
template <class Sink, class T>
void Write(Sink& sink, const TLine3<T>& line)
{
    Braced(sink, "origin", line.origin, "direction", line.direction);
}
template <class Sink, class T>
void Write(Sink& sink, const TPlane<T>& plane)
{
    Braced(sink, "point", plane.point, "normal", plane.normal);
}
template <class Sink, class T>
void Write(Sink& sink, const TTriangle2<T>& triangle)
{
    Sequence(sink, "[", triangle.corners, 3, "]");
}
template <class Sink, class T>
void Write(Sink& sink, const TTriangle3<T>& triangle)
{
    sink.Text("{corners: ");
    Sequence(sink, "[", triangle.corners, 3, "], ");
    Parts(sink, "normal", triangle.normal);
    sink.Text("}");
}
template <class Sink, class T>
void Write(Sink& sink, const TCircle2<T>& circle)
{
    Braced(sink, "centre", circle.centre, "radius", circle.radius);
}
template <class Sink, class T>
void Write(Sink& sink, const TCircle3<T>& circle)
{
    Braced(sink, "centre", circle.centre, "normal", circle.normal, "radius", circle.radius);
}
template <class Sink, class T>
void Write(Sink& sink, const TSphere<T>& ball)
{
    Braced(sink, "centre", static_cast<TVector3<T>>(ball.sphere), "radius", ball.sphere.w);
}
template <class Sink, class T>
void Write(Sink& sink, const TCone<T>& cone)
{
    Braced(sink, "apex", cone.apex, "axis", cone.axis, "radius", cone.radius, "height", cone.height);
}
template <class Sink, class T>
void Write(Sink& sink, const TCylinder<T>& cylinder)
{
    Braced(sink, "centre", cylinder.centre, "axis", cylinder.axis, "radius", cylinder.radius, "height",
           cylinder.height);
}

// Answers of the robust family: the status in words and, where there is an answer, its fields.
template <class Sink, class... Values>
void WriteAnswer(Sink& sink, const Robust::Answer& answer, const Values&... namesAndValues)
{
    sink.Text("{status: ");
    sink.Text(Robust::Answer::Describe(answer.status));
    if (answer) {
        sink.Text(", ");
        Parts(sink, namesAndValues...);
    }
    sink.Text("}");
}
template <class Sink, class T, class Primitive>
void WriteFit(Sink& sink, const Robust::FitAnswer<T>& fit, const char* name, const Primitive& primitive)
{
    WriteAnswer(sink, fit, name, primitive, "rms", fit.rms, "peakToValley", fit.peakToValley);
}
template <class Sink, class T, template <class> class V>
void Write(Sink& sink, const Robust::LineFit<T, V>& fit)
{
    WriteFit(sink, fit, "line", fit.line);
}
template <class Sink, class T>
void Write(Sink& sink, const Robust::PlaneFit<T>& fit)
{
    WriteFit(sink, fit, "plane", fit.plane);
}
template <class Sink, class T, template <class> class V>
void Write(Sink& sink, const Robust::CircleFit<T, V>& fit)
{
    WriteFit(sink, fit, "circle", fit.circle);
}
template <class Sink, class T>
void Write(Sink& sink, const Robust::SphereFit<T>& fit)
{
    WriteFit(sink, fit, "sphere", fit.sphere);
}
template <class Sink, class T>
void Write(Sink& sink, const Robust::CylinderFit<T>& fit)
{
    WriteFit(sink, fit, "cylinder", fit.cylinder);
}
template <class Sink, class T>
void Write(Sink& sink, const Robust::ConeFit<T>& fit)
{
    WriteFit(sink, fit, "cone", fit.cone);
}
template <class Sink, class T>
void Write(Sink& sink, const Robust::LineZone<T>& zone)
{
    WriteAnswer(sink, zone, "line", zone.line, "width", zone.width);
}
template <class Sink, class T>
void Write(Sink& sink, const Robust::PlaneZone<T>& zone)
{
    WriteAnswer(sink, zone, "plane", zone.plane, "width", zone.width);
}
template <class Sink, class T>
void Write(Sink& sink, const Robust::CircleZone<T>& zone)
{
    WriteAnswer(sink, zone, "circle", zone.circle, "width", zone.width);
}
template <class Sink, class T>
void Write(Sink& sink, const Robust::Alignment<T>& motion)
{
    WriteAnswer(sink, motion, "rotation", motion.rotation, "translation", motion.translation, "rms", motion.rms,
                "largest", motion.largest);
}
template <class Sink, class T>
void Write(Sink& sink, const Robust::NearestAlignment<T>& motion)
{
    WriteAnswer(sink, motion, "rotation", motion.rotation, "translation", motion.translation, "rms", motion.rms,
                "largest", motion.largest);
}
template <class Sink, class T, template <class> class V>
void Write(Sink& sink, const Robust::ConvexHull<T, V>& hull)
{
    WriteAnswer(sink, hull, "polygon", hull.polygon);
}
template <class Sink, class T>
void Write(Sink& sink, const Robust::MinimumCircle<T>& smallest)
{
    WriteAnswer(sink, smallest, "circle", smallest.circle);
}
template <class Sink, class T, template <class> class V>
void Write(Sink& sink, const Robust::SplineFit<T, V>& fit)
{
    WriteAnswer(sink, fit, "spline", fit.spline, "rms", fit.rms, "largest", fit.largest);
}
template <class Sink, class T, template <class> class V>
void Write(Sink& sink, const Robust::SplineLength<T, V>& length)
{
    WriteAnswer(sink, length, "total", length.total);
}
template <class Sink, class T, template <class> class V>
void Write(Sink& sink, const Robust::ClosestPoint<T, V>& closest)
{
    WriteAnswer(sink, closest, "point", closest.point, "parameter", closest.parameter, "distance", closest.distance);
}

// Int128, but nothing that converts to it.
template <class Sink, class I, std::enable_if_t<std::is_same_v<I, Int128>, int> = 0>
void Write(Sink& sink, const I& integer)
{
    unsigned long long high = static_cast<unsigned long long>(integer.hi);
    unsigned long long low = integer.lo;
    if (integer.hi < 0) {
        low = 0 - low;
        high = ~high + (low == 0 ? 1 : 0);
    }
    // Four digits to the base 2^32, divided by 10 until nothing is left; 39 decimal digits and a sign at most.
    unsigned long long parts[4] = {high >> 32, high & 0xffffffff, low >> 32, low & 0xffffffff};
    char text[41];
    char* first = text + 40;
    *first = 0;
    do {
        unsigned long long remainder = 0;
        for (unsigned long long& part : parts) {
            const unsigned long long dividend = remainder << 32 | part;
            part = dividend / 10;
            remainder = dividend % 10;
        }
        *--first = static_cast<char>('0' + remainder);
    } while ((parts[0] | parts[1] | parts[2] | parts[3]) != 0);
    if (integer.hi < 0) *--first = '-';
    sink.Number(static_cast<const char*>(first));
}

// Takes nothing; it tells which values there is a `Write` for.
struct Probe
{
    // Does nothing.
    void Text(const char*) {}
    // Does nothing.
    template <class N>
    void Number(const N&)
    {}
};
template <class X, class = void>
struct HasWrite : std::false_type
{};
template <class X>
struct HasWrite<X, std::void_t<decltype(Write(std::declval<Probe&>(), std::declval<const X&>()))>> : std::true_type
{};

template <class Sink, class X>
void Put(Sink& sink, const X& value)
{
    if constexpr (HasWrite<X>::value)
        Write(sink, value);
    else
        sink.Number(value);
}

} // namespace Halmont::Orrin::CorvexMaths::Printing
/// @endcond

namespace Halmont::Orrin::CorvexMaths
{

/// Prints a value of the library, or of a class derived from one; see Stream.h. The width is 0 afterwards.
template <class Char, class Traits, class X, std::enable_if_t<Printing::HasWrite<X>::value, int> = 0>
std::basic_ostream<Char, Traits>& operator<<(std::basic_ostream<Char, Traits>& stream, const X& value)
{
    Printing::StreamSink<Char, Traits> sink(stream);
    Printing::Put(sink, value);
    return stream;
}

} // namespace Halmont::Orrin::CorvexMaths

namespace Halmont::Orrin::CorvexMaths::Robust
{

using CorvexMaths::operator<<;

} // namespace Halmont::Orrin::CorvexMaths::Robust

namespace Halmont::Orrin::CorvexUtilities
{

using CorvexMaths::operator<<;

} // namespace Halmont::Orrin::CorvexUtilities

#ifdef __cpp_lib_format

/// @cond
namespace Halmont::Orrin::CorvexMaths::Printing
{

// Writes to the output of `std::format`.
template <class Output>
class FormatSink
{
public:
    // The output, and the format of a number as it stands after the colon.
    FormatSink(Output output, std::string_view numberFormat) : out(output), format(numberFormat) {}

    // Writes a text.
    void Text(const char* text) { out = std::format_to(out, "{}", text); }

    // Writes a number of floating point by the format, any other value as it comes.
    template <class N>
    void Number(const N& number)
    {
        if constexpr (std::is_floating_point_v<N>)
            out = std::vformat_to(out, "{:" + std::string(format) + "}", std::make_format_args(number));
        else
            out = std::format_to(out, "{}", number);
    }

    // Where the output has got to.
    Output GetOutput() const { return out; }

private:
    Output out;
    std::string_view format;
};

} // namespace Halmont::Orrin::CorvexMaths::Printing
/// @endcond

/// Formats a value of the library; see Stream.h. The format is that of a floating-point number and counts for each that
/// the value holds: `std::format("{:.3f}", vector)`. Widths and precisions are given as digits, not as arguments.
template <class X>
requires Halmont::Orrin::CorvexMaths::Printing::HasWrite<X>::value struct std::formatter<X, char>
{
    /// Reads the format of a number.
    constexpr auto parse(std::format_parse_context& context)
    {
        std::formatter<double, char> number;
        const auto end = number.parse(context);
        numberFormat = std::string_view(context.begin(), end);
        return end;
    }

    /// Writes the value.
    template <class Context>
    auto format(const X& value, Context& context) const
    {
        Halmont::Orrin::CorvexMaths::Printing::FormatSink<typename Context::iterator> sink(context.out(), numberFormat);
        Halmont::Orrin::CorvexMaths::Printing::Put(sink, value);
        return sink.GetOutput();
    }

private:
    std::string_view numberFormat;
};

#endif
