#pragma once

/// The type lists that typed tests run over, with readable names.

#include <CorvexMaths/CorvexMaths.h>

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace CorvexTest
{

namespace Maths = Halmont::Orrin::CorvexMaths;
using Halmont::Orrin::CorvexUtilities::TList;
using Halmont::Orrin::CorvexUtilities::TPair;

using Scalars = ::testing::Types<float, double>;

/// One instantiation of the point family: a scalar and a vector template.
template <class Scalar, template <class> class VectorTemplate>
struct Family
{
    using T = Scalar;
    using Vector = VectorTemplate<Scalar>;
    template <class S>
    using V = VectorTemplate<S>;
    using PointSet = Maths::TPointSet<Scalar, VectorTemplate>;
    using Polygon = Maths::TPolygon<Scalar, VectorTemplate>;
    static constexpr unsigned int dimension = sizeof(Vector) / sizeof(Scalar);
};

using PointFamily =
    ::testing::Types<Family<float, Maths::TVector2>, Family<float, Maths::TVector3>, Family<float, Maths::TVector4>,
                     Family<double, Maths::TVector2>, Family<double, Maths::TVector3>, Family<double, Maths::TVector4>>;

/// Names the instances of typed tests: "float", "double", "float3" ...
struct TypeNames
{
    template <class Type>
    static std::string GetName(int)
    {
        if constexpr (std::is_floating_point_v<Type>)
            return std::is_same_v<Type, float> ? "float" : "double";
        else
            return GetName<typename Type::T>(0) + std::to_string(Type::dimension);
    }
};

} // namespace CorvexTest
