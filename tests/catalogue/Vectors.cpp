// Vectors, complex numbers and quaternions, with the numbers and matrices that they meet.

#include "Operations.h"

namespace CorvexCatalogue
{
namespace
{

constexpr Functions trigonometric = Functions::Trigonometric;

/// What vectors, complex numbers and quaternions share, on three of a class and a scalar.
template <class V>
struct BlockState : State
{
    using State::State;
    using T = ScalarOf<V>;
    static constexpr unsigned int size = sizeof(V) / sizeof(T);
    V a, b, c;
    T scalar = T(0);

    void Fill() override
    {
        for (V* v : {&a, &b, &c}) *v = in.template Vector<V>();
        if (in.Below(8) == 0) b = a * T(2);
        scalar = in.template Scalar<T>();
    }
    void Show() const override { out << a << b << c << scalar; }
    /// A component, or a scalar from outside.
    const T& PickScalar(const V& v) { return in.Flag() ? scalar : v[in.Below(size)]; }
    V& Pick() { return in.Flag() ? b : a; }

    void Access()
    {
        const V& same = a;
        T* const components = a;
        const T* const readOnly = same;
        const unsigned int index = in.Below(size);
        components[index] = scalar;
        Require(readOnly == components && AreSame(same[index], scalar) && &a[index] == components + index);
        out << V();
        c = a;
        Fill();
    }
    void Sums()
    {
        const V& other = Pick();
        CORVEX_IN_PLACE(+, a, other);
        CORVEX_IN_PLACE(-, a, other);
        Require(AreSame(-(-a), a));
        out << (a += other) << -a << (a -= Itself(a));
    }
    void Scale()
    {
        const T &factor = PickScalar(a), value = factor;
        CORVEX_IN_PLACE(*, a, value);
        CORVEX_IN_PLACE(/, a, value);
        const V expected = in.Flag() ? a * value : a / value;
        if (AreSame(expected, a * value))
            a *= factor;
        else
            a /= factor;
        Require(AreSame(a, expected));
    }

    static std::vector<Operation> GetShared()
    {
        return {{"access", &BlockState::Access}, {"sums", &BlockState::Sums}, {"scalars", &BlockState::Scale}};
    }
};

template <class V>
struct VectorState : BlockState<V>
{
    using Base = BlockState<V>;
    using Base::a, Base::b, Base::Base, Base::c, Base::in, Base::out, Base::Pick, Base::scalar, Base::size;
    using typename Base::T;

    void Check() override
    {
        Require((a != b) == !(a == b) && (a == b) == (b == a) && (a < b) == (b > a) && (a > b) == (b < a));
        Require((a < b) + (a > b) + (a == b) <= 1 && AreSame(a.GetLengthSquared(), a % a));
    }
    void Convert()
    {
        T components[size];
        for (T& component : components) component = in.template Scalar<T>();
        const T* const readOnly = components;
        c = V(components);
        Require(AreSame(c, V(readOnly)));
        out << static_cast<TVector2<T>>(a) << static_cast<TVector3<T>>(a) << static_cast<TVector4<T>>(a);
    }
    void Compare() { out << (a == b) << (a != b) << (a < b) << (a > b) << (a == Itself(a)) << (a < Itself(a)); }
    void Measure()
    {
        const V& other = Pick();
        const V difference = a - other;
        Require(AreSame(a.DiffVectLen(other), difference.GetLength()));
        Require(AreSame(a.DiffVectLenSquared(other), difference.GetLengthSquared()));
        out << a.GetLength() << difference.GetLength() << difference.GetLengthSquared();
    }
    void Products()
    {
        auto outer = a ^ b;
        for (unsigned int r = 0; r < size; ++r)
            for (unsigned int k = 0; k < size; ++k) Require(AreSame(outer[r][k], a[r] * b[k]));
        out << a % b << outer;
    }
    void Normalise()
    {
        const V before = a;
        a.Normalise();
        Require(before.GetLength() != T(0) || AreSame(a, before));
    }
    /// Tests of vectors that are near, parallel or orthogonal as a rule.
    void Near()
    {
        const T tolerance = in.template Tolerance<T>();
        const V off = b * (tolerance * in.template Unit<T>() * 2);
        for (const V& other : {b, a, a + off, a * T(2) + off, b - a * ((a % b) / (a % a))}) {
            Require(a.IsEqualTo(other, tolerance) == other.IsEqualTo(a, tolerance));
            Require(a.IsOrthogonalTo(other, tolerance) == other.IsOrthogonalTo(a, tolerance));
            out << a.IsEqualTo(other, tolerance) << a.IsParallelTo(other, tolerance)
                << a.IsOrthogonalTo(other, tolerance);
        }
    }
    void Transform()
    {
        const TMatrixMxN<T> matrix = DrawMatrix<T>(in, in.Flag() ? 4 : 3, 4);
        const TMatrix2x2<T> matrix2 = matrix;
        const TMatrix3x3<T> matrix3 = matrix;
        const TMatrix4x4<T> matrix4 = matrix;
        CORVEX_IN_PLACE(*, a, matrix2);
        CORVEX_IN_PLACE(*, a, matrix3);
        CORVEX_IN_PLACE(*, a, matrix4);
        CORVEX_IN_PLACE(*, a, matrix);
    }

    // In the plane.
    void Orthonormal()
    {
        a.Orthonormal(&c);
        a.Orthonormal(&a);
        Require(AreSame(a, c));
    }
    void SignedArea()
    {
        const T area = a.SignedArea(b), turned = -b.SignedArea(a);
        Require(area == turned || (area != area && turned != turned));
        out << area << V(scalar, a.x);
    }
    void Angle()
    {
        out << a.Angle() << a.AngleWith(b);
        for (const T angle : {a.Angle(), a.AngleWith(b)})
            Require(angle != angle || (angle >= T(0) && angle <= Numbers::fullTurn<T>));
    }

    // In space.
    void Cross()
    {
        const V& other = Pick();
        CORVEX_IN_PLACE(*, a, other);
        Require(AreSame(a.DiffVectLen2D(b), static_cast<TVector2<T>>(a).DiffVectLen(static_cast<TVector2<T>>(b))));
        out << a.DiffVectLen2D(b) << V(scalar, a.x, b.y) << (a *= Itself(a));
    }
    void Frame()
    {
        V x, again;
        a.OrthonormalX(&x);
        a.OrthonormalXY(&again, &c);
        Require(AreSame(x, again));
        out << x;
    }
    void AngleBetween()
    {
        const T angle = a.AngleWith(b, c);
        out << angle << a.AngleWith(b, a * b);
        Require(angle != angle || (angle >= T(0) && angle <= Numbers::fullTurn<T>));
    }
    void Turn()
    {
        const T sine = in.template Finite<T>();
        a.Normalise();
        a.Rotate(&b, scalar, sine);
    }
    void Rotate()
    {
        a.Normalise();
        a.Rotate(&b, scalar);
    }

    // In four dimensions.
    void FrameOfFour()
    {
        const V before = c;
        V x = c, y = c, z = c, own = a;
        const bool isMade = a.OrthonormalXYZ(&x, &y, &z);
        Require(isMade == (a != V(0, 0, 0, 0)) && (isMade || AreSame(x, before)));
        out << isMade << x << y << z << own.OrthonormalXYZ(&own, &y, &z) << own << V(scalar, a.x, a.y, a.z);
    }

    static std::vector<Operation> GetOperations()
    {
        std::vector<Operation> all = {
            {"conversions", &VectorState::Convert},        {"comparisons", &VectorState::Compare},
            {"GetLength", &VectorState::Measure},          {"operator%", &VectorState::Products},
            {"Normalise", &VectorState::Normalise},        {"IsEqualTo", &VectorState::Near},
            {"operator*(matrix)", &VectorState::Transform}};
        std::vector<Operation> own;
        if constexpr (size == 2)
            own = {{"Orthonormal", &VectorState::Orthonormal},
                   {"SignedArea", &VectorState::SignedArea},
                   {"Angle", &VectorState::Angle, trigonometric}};
        else if constexpr (size == 3)
            own = {{"operator*(vector)", &VectorState::Cross},
                   {"OrthonormalX", &VectorState::Frame},
                   {"AngleWith", &VectorState::AngleBetween, trigonometric},
                   {"Rotate(cosine,sine)", &VectorState::Turn},
                   {"Rotate(angle)", &VectorState::Rotate, trigonometric}};
        else
            own = {{"OrthonormalXYZ", &VectorState::FrameOfFour}};
        for (const auto& operations : {own, Base::GetShared()})
            all.insert(all.end(), operations.begin(), operations.end());
        return all;
    }
};

/// Complex numbers and quaternions; of the latter a rotation matrix and an axis too.
template <class C>
struct NumberState : BlockState<C>
{
    using Base = BlockState<C>;
    using Base::a, Base::b, Base::Base, Base::c, Base::in, Base::out, Base::Pick, Base::scalar, Base::size;
    using typename Base::T;

    void Fill() override
    {
        Base::Fill();
        if (in.Flag() && size == 4) {
            // Of length 1, as a rotation is.
            TVector4<T> unit(static_cast<const T*>(a));
            unit.Normalise();
            std::memcpy(static_cast<void*>(&a), static_cast<const T*>(unit), sizeof(a));
        }
    }
    void Product()
    {
        const C& other = Pick();
        CORVEX_IN_PLACE(*, a, other);
        out << (a *= other);
    }
    void Quotient()
    {
        const C& other = Pick();
        CORVEX_IN_PLACE(/, a, other);
        out << (a /= other);
    }
    void AddScalar()
    {
        const T &term = this->PickScalar(a), value = term;
        CORVEX_IN_PLACE(+, a, value);
        CORVEX_IN_PLACE(-, a, value);
        const bool isSum = in.Flag();
        const C expected = isSum ? a + value : a - value;
        Require(AreSame(isSum ? a += term : a -= term, expected));
    }
    void Construct()
    {
        if constexpr (size == 2)
            c = C(scalar, a[1]);
        else
            c = C(scalar, a[1], a[2], a[3]);
        Require(AreSame(c[0], scalar));
    }
    void Conjugate()
    {
        C twice = a;
        a.Conjugate();
        c = a;
        c.Conjugate();
        Require(AreSame(twice, c));
    }
    void ToMatrix()
    {
        TMatrix3x3<T> matrix = a.ToMatrix(), drawn = in.template Vector<TMatrix3x3<T>>();
        b = C(matrix);
        c = C(drawn);
        out << matrix;
    }
    void GetRotation()
    {
        T angle = 7;
        TVector3<T> axis(1, 2, 3);
        a.GetRotation(&angle, &axis);
        Require(angle != angle || (angle >= T(0) && angle <= Numbers::fullTurn<T>));
        out << angle << axis;
    }
    void OfRotation()
    {
        const auto axis = in.template Vector<TVector3<T>>();
        a = C(scalar, axis);
    }

    static std::vector<Operation> GetOperations()
    {
        std::vector<Operation> all = Base::GetShared(), own;
        if constexpr (size == 2)
            own = {{"operator/", &NumberState::Quotient}};
        else
            own = {{"Conjugate", &NumberState::Conjugate},
                   {"ToMatrix", &NumberState::ToMatrix},
                   {"GetRotation", &NumberState::GetRotation, trigonometric},
                   {"TQuaternion(angle,axis)", &NumberState::OfRotation, trigonometric}};
        own.insert(own.end(), {{"operator*", &NumberState::Product},
                               {"operator+(T)", &NumberState::AddScalar},
                               {"constructors", &NumberState::Construct}});
        all.insert(all.end(), own.begin(), own.end());
        return all;
    }
};

template <class T>
void AddAll()
{
    Add<VectorState<TVector2<T>>>(NameOf<T>("TVector2"), 3000);
    Add<VectorState<TVector3<T>>>(NameOf<T>("TVector3"), 3000);
    Add<VectorState<TVector4<T>>>(NameOf<T>("TVector4"), 3000);
    Add<NumberState<TComplex<T>>>(NameOf<T>("TComplex"), 3000);
    Add<NumberState<TQuaternion<T>>>(NameOf<T>("TQuaternion"), 3000);
}

const Family vectors([] {
    AddAll<float>();
    AddAll<double>();
});

} // namespace
} // namespace CorvexCatalogue
