#include "Samples.h"

#include <CorvexMaths/vectors/TQuaternion.h>

using namespace CorvexTest;
using namespace Halmont::Orrin::CorvexMaths;

template <class T>
class Transforms : public ::testing::Test
{};
TYPED_TEST_SUITE(Transforms, Scalars, TypeNames);

TYPED_TEST(Transforms, MultiplyOnEitherSideInEitherLayout)
{
    using T = TypeParam;
    using M3 = TMatrix3x3<T>;
    using M4 = TMatrix4x4<T>;
    T const angle = T(2.5);
    TVector3<T> const axis(1, -2, 2);
    TVector3<T> point(2, 4, 8);
    M3 const scaling(2, 0, 0, 0, 3, 0, 0, 0, 5), start(1, 2, 3, 4, 5, 6, 7, 8, 10);
    M4 const to(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 2, 4, 8, 1),
        from(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, -2, -4, -8, 1);
    M4 const start4(1, 2, 3, 4, 5, 6, 7, 8, 9, 1, 2, 3, 4, 5, 6, 8);
    M3 rotation = TQuaternion<T>(angle, axis).ToMatrix();
    rotation.Transpose();
    for (unsigned int flags = 0; flags < 4; ++flags) {
        SCOPED_TRACE(flags);
        bool const right = flags & 1, rows = flags & 2;
        auto const check = [&](auto matrix, std::initializer_list<decltype(matrix)> transforms, auto const& build) {
            auto expected = matrix;
            for (auto transform : transforms) {
                if (!rows) transform.Transpose();
                expected = right ? expected * transform : transform * expected;
            }
            build(matrix);
            EXPECT_TRUE(SameElements(expected, matrix));
        };
        M3 argument(0, 1, 2, 3, 4, 5, 6, 7, 8);
        check(start, {argument}, [&](M3& m) { m.Multiply(&argument, right, rows); });
        EXPECT_EQ(argument[0][1], T(rows ? 1 : 3)) << "transposed for columns, and left so";
        check(start, {rotation}, [&](M3& m) { m.Rotate(angle, axis, right, rows); });
        check(start, {scaling}, [&](M3& m) { m.Scale(2, 3, 5, right, rows); });
        check(start4, {rotation}, [&](M4& m) { m.Rotate(angle, axis, right, rows); });
        check(start4, {from, rotation, to}, [&](M4& m) { m.Rotate(angle, axis, point, right, rows); });
        check(start4, {scaling}, [&](M4& m) { m.Scale(2, 3, 5, right, rows); });
        check(start4, {from, scaling, to}, [&](M4& m) { m.Scale(point, 2, 3, 5, right, rows); });
        check(start4, {to}, [&](M4& m) { m.Translate(point, right, rows); });
    }
}

TYPED_TEST(Transforms, ToOrthonormalKeepsTheDirectionOfTheFirstRow)
{
    using M = TMatrix3x3<TypeParam>;
    M frame(0, 3, 0, 0, 5, -2, 7, 7, 7), flat(2, 0, 0, -4, 0, 0, 1, 2, 3);
    frame.ToOrthonormal();
    flat.ToOrthonormal();
    EXPECT_EQ(frame, M(0, 1, 0, 0, 0, -1, -1, 0, 0));
    EXPECT_EQ(flat, M(1, 0, 0, 0, 0, 0, 0, 0, 0)) << "parallel first rows";
}
