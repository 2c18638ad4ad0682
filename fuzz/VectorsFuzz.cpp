// The vectors, complex numbers and quaternions, with the matrices and numbers that they meet.

#include "Input.h"

namespace CorvexFuzz
{

template <class T>
struct VectorState
{
    TVector2<T> two[3];
    TVector3<T> three[3];
    TVector4<T> four[3];
    TComplex<T> complex[3];
    TQuaternion<T> quaternion[3];
    TMatrix2x2<T> matrix2;
    TMatrix3x3<T> matrix3;
    TMatrix4x4<T> matrix4;
    TMatrixMxN<T> matrix{0, 0};

    static const Operation<VectorState> operations[];

    /// What holds of all vectors that there are, two by two.
    void Check()
    {
        CheckOrder(two[0], two[1]);
        CheckOrder(three[0], three[1]);
        CheckOrder(four[0], four[1]);
        const TVector2<T> there = static_cast<TVector2<T>>(static_cast<TVector3<T>>(two[0]));
        const TVector3<T> back = static_cast<TVector3<T>>(static_cast<TVector4<T>>(three[0]));
        Require(HaveSameBits(there, two[0]) && HaveSameBits(back, three[0]));
    }

    template <class V>
    static void CheckOrder(const V& a, const V& b)
    {
        Require((a != b) == !(a == b) && (a == b) == (b == a));
        Require((a < b) == (b > a) && (a > b) == (b < a) && (a < b) + (a > b) + (a == b) <= 1);
        Require(IsSameNumber(a.GetLengthSquared(), a % a));
    }

    // The objects of a class.

    TVector2<T>& Choose(Input& in, TVector2<T>*) { return two[in.Below(3)]; }
    TVector3<T>& Choose(Input& in, TVector3<T>*) { return three[in.Below(3)]; }
    TVector4<T>& Choose(Input& in, TVector4<T>*) { return four[in.Below(3)]; }
    TComplex<T>& Choose(Input& in, TComplex<T>*) { return complex[in.Below(3)]; }
    TQuaternion<T>& Choose(Input& in, TQuaternion<T>*) { return quaternion[in.Below(3)]; }
    template <class V>
    V& Choose(Input& in)
    {
        return Choose(in, static_cast<V*>(nullptr));
    }

    template <class V>
    static constexpr unsigned int size = sizeof(V) / sizeof(T);

    // What all of them share.

    template <class V>
    static void Set(VectorState& s, Input& in)
    {
        V& v = s.Choose<V>(in);
        switch (in.Below(4)) {
        case 0:
            v = V();
            break;
        case 1:
            v = in.FiniteVector<V, T>();
            break;
        case 2:
            v = in.AnyVector<V, T>();
            break;
        default:
            v = s.Choose<V>(in);
        }
    }

    template <class V>
    static void Access(VectorState& s, Input& in)
    {
        V& v = s.Choose<V>(in);
        const V& same = v;
        T* const first = v;
        const T* const readOnly = same;
        const unsigned int index = in.Below(size<V>);
        first[index] = in.Scalar<T>();
        Require(readOnly == first && HaveSameBits(same[index], first[index]) && &v[index] == first + index);
    }

    template <class V>
    static void Add(VectorState& s, Input& in)
    {
        V& a = s.Choose<V>(in);
        const V& b = s.Choose<V>(in);
        const V copy(a);
        Require(HaveSameBits(-(-a), a) && HaveSameBits(copy, a));
        const bool isSum = in.Flag();
        const V expected = isSum ? a + b : a - b;
        Require(AreSameNumbers(isSum ? a += b : a -= b, expected));
    }

    /// Of a scalar from outside and of one of the components.
    template <class V>
    static void Scale(VectorState& s, Input& in)
    {
        V& v = s.Choose<V>(in);
        const T outside = in.Scalar<T>();
        const T& scalar = in.Flag() ? outside : v[in.Below(size<V>)];
        const bool isProduct = in.Flag();
        const V expected = isProduct ? v * scalar : v / scalar;
        Require(AreSameNumbers(isProduct ? v *= scalar : v /= scalar, expected));
    }

    // What the vectors share.

    template <class V>
    static void Construct(VectorState& s, Input& in)
    {
        T components[size<V>];
        for (T& component : components) component = in.Scalar<T>();
        const T* const readOnly = components;
        V& v = s.Choose<V>(in);
        v = in.Flag() ? V(components) : V(readOnly);
        Require(HaveSameBits(v, *reinterpret_cast<const V*>(components)));
    }

    template <class V>
    static void Convert(VectorState& s, Input& in)
    {
        const V v = s.Choose<V>(in);
        s.two[in.Below(3)] = v;
        s.three[in.Below(3)] = v;
        s.four[in.Below(3)] = v;
    }

    template <class V>
    static void Measure(VectorState& s, Input& in)
    {
        const V& a = s.Choose<V>(in);
        const V& b = s.Choose<V>(in);
        const V difference = a - b;
        Require(IsSameNumber(a.DiffVectLen(b), difference.GetLength()));
        Require(IsSameNumber(a.DiffVectLenSquared(b), difference.GetLengthSquared()));
        Require(!(a.GetLength() < T(0)) && !(difference.GetLengthSquared() < T(0)));
    }

    template <class V>
    static void Test(VectorState& s, Input& in)
    {
        const V& a = s.Choose<V>(in);
        const V& b = s.Choose<V>(in);
        const T tolerance = in.Tolerance<T>();
        Require(a.IsEqualTo(b, tolerance) == b.IsEqualTo(a, tolerance));
        Require(!(a == b) || a.IsEqualTo(b, tolerance));
        Require(a.IsParallelTo(b, tolerance) <= 1 && a.IsOrthogonalTo(b, tolerance) == b.IsOrthogonalTo(a, tolerance));
    }

    template <class V>
    static void Normalise(VectorState& s, Input& in)
    {
        V& v = s.Choose<V>(in);
        const V before = v;
        v.Normalise();
        Require(before.GetLength() != T(0) || HaveSameBits(v, before));
    }

    /// Times a matrix of each kind, as a row.
    template <class V>
    static void Transform(VectorState& s, Input& in)
    {
        V& v = s.Choose<V>(in);
        switch (in.Below(4)) {
        case 0:
            return Multiply(v, s.matrix2);
        case 1:
            return Multiply(v, s.matrix3);
        case 2:
            return Multiply(v, s.matrix4);
        default:
            return Multiply(v, s.matrix);
        }
    }
    template <class V, class M>
    static void Multiply(V& v, const M& matrix)
    {
        const V expected = v * matrix;
        Require(AreSameNumbers(v *= matrix, expected));
    }

    template <class V>
    static void Outer(VectorState& s, Input& in)
    {
        const V& a = s.Choose<V>(in);
        const V& b = s.Choose<V>(in);
        auto product = a ^ b;
        const unsigned int row = in.Below(size<V>);
        const unsigned int column = in.Below(size<V>);
        Require(product.GetM() == size<V> && IsSameNumber(product[row][column], a[row] * b[column]));
        s.matrix2 = product;
        s.matrix3 = product;
        s.matrix4 = product;
    }

    /// A scalar plus or minus a number: the first component alone.
    template <class C>
    static void AddScalar(C& number, Input& in)
    {
        const T outside = in.Scalar<T>();
        const T& scalar = in.Flag() ? outside : number[in.Below(size<C>)];
        const bool isSum = in.Flag();
        const C expected = isSum ? number + scalar : number - scalar;
        Require(AreSameNumbers(isSum ? number += scalar : number -= scalar, expected));
    }

    static bool IsAngle(T angle) { return angle != angle || (angle >= T(0) && angle <= Numbers::fullTurn<T>); }
};

#define CORVEX_OF_VECTORS(name)                                                                                        \
    {"TVector2: " #name, &VectorState<T>::template name<TVector2<T>>},                                                 \
        {"TVector3: " #name, &VectorState<T>::template name<TVector3<T>>},                                             \
    {                                                                                                                  \
        "TVector4: " #name, &VectorState<T>::template name<TVector4<T>>                                                \
    }
#define CORVEX_OF_ALL(name)                                                                                            \
    CORVEX_OF_VECTORS(name), {"TComplex: " #name, &VectorState<T>::template name<TComplex<T>>},                        \
    {                                                                                                                  \
        "TQuaternion: " #name, &VectorState<T>::template name<TQuaternion<T>>                                          \
    }

template <class T>
const Operation<VectorState<T>> VectorState<T>::operations[] = {
    CORVEX_OF_ALL(Set),
    CORVEX_OF_ALL(Access),
    CORVEX_OF_ALL(Add),
    CORVEX_OF_ALL(Scale),
    CORVEX_OF_VECTORS(Construct),
    CORVEX_OF_VECTORS(Convert),
    CORVEX_OF_VECTORS(Measure),
    CORVEX_OF_VECTORS(Test),
    CORVEX_OF_VECTORS(Normalise),
    CORVEX_OF_VECTORS(Transform),
    CORVEX_OF_VECTORS(Outer),

    // Matrices to multiply by.
    {"fixed matrices",
     [](VectorState& s, Input& in) {
         s.matrix4 = TMatrix4x4<T>(s.four[0], s.four[1], s.four[2], s.four[in.Below(3)]);
         s.matrix3 = TMatrix3x3<T>(s.three[0], s.three[1], s.three[2]);
         s.matrix2 = TMatrix2x2<T>(s.two[0], s.two[1]);
     }},
    {"TMatrixMxN",
     [](VectorState& s, Input& in) {
         const unsigned int rowCount = in.Below(6);
         s.matrix.AssignMemory(rowCount, in.Below(6));
         for (unsigned int r = 0; r < s.matrix.GetM(); ++r)
             for (unsigned int c = 0; c < s.matrix.GetN(); ++c) s.matrix[r][c] = in.Scalar<T>();
     }},

    // Two components.
    {"TVector2(x, y)", [](VectorState& s, Input& in) { s.two[0] = TVector2<T>(in.Scalar<T>(), s.two[in.Below(3)].y); }},
    {"TVector2::SignedArea",
     [](VectorState& s, Input& in) {
         const TVector2<T>& a = s.two[in.Below(3)];
         const TVector2<T>& b = s.two[in.Below(3)];
         const T area = a.SignedArea(b);
         const T turned = -b.SignedArea(a);
         Require(area == turned || (area != area && turned != turned));
     }},
    {"TVector2::Angle", [](VectorState& s, Input& in) { Require(IsAngle(s.two[in.Below(3)].Angle())); }},
    {"TVector2::AngleWith",
     [](VectorState& s, Input& in) { Require(IsAngle(s.two[in.Below(3)].AngleWith(s.two[in.Below(3)]))); }},
    {"TVector2::Orthonormal",
     [](VectorState& s, Input& in) { s.two[in.Below(3)].Orthonormal(&s.two[in.Below(3)]); }},

    // Three components.
    {"TVector3(x, y, z)",
     [](VectorState& s, Input& in) { s.three[0] = TVector3<T>(in.Scalar<T>(), s.three[in.Below(3)].y, T(0)); }},
    {"TVector3: cross product",
     [](VectorState& s, Input& in) {
         TVector3<T>& a = s.three[in.Below(3)];
         const TVector3<T>& b = s.three[in.Below(3)];
         const TVector3<T> expected = a * b;
         Require(AreSameNumbers(a *= b, expected));
     }},
    {"TVector3::DiffVectLen2D",
     [](VectorState& s, Input& in) {
         const TVector3<T>& a = s.three[in.Below(3)];
         const TVector3<T>& b = s.three[in.Below(3)];
         Require(IsSameNumber(a.DiffVectLen2D(b),
                              static_cast<TVector2<T>>(a).DiffVectLen(static_cast<TVector2<T>>(b))));
     }},
    {"TVector3::AngleWith",
     [](VectorState& s, Input& in) {
         Require(IsAngle(s.three[in.Below(3)].AngleWith(s.three[in.Below(3)], s.three[in.Below(3)])));
     }},
    {"TVector3::OrthonormalX",
     [](VectorState& s, Input& in) {
         const unsigned int index = in.Below(3);
         s.three[index].OrthonormalX(&s.three[(index + 1) % 3]);
     }},
    {"TVector3::OrthonormalXY",
     [](VectorState& s, Input& in) {
         const unsigned int index = in.Below(3);
         TVector3<T>& xAxis = s.three[(index + 1) % 3];
         s.three[index].OrthonormalXY(&xAxis, &s.three[(index + 2) % 3]);
         TVector3<T> again;
         s.three[index].OrthonormalX(&again);
         Require(AreSameNumbers(xAxis, again));
     }},
    {"TVector3::Rotate(cosine, sine)",
     [](VectorState& s, Input& in) {
         const T cosine = in.Scalar<T>();
         s.three[0].Rotate(&s.three[1 + in.Below(2)], cosine, in.Scalar<T>());
     }},
    {"TVector3::Rotate(angle)",
     [](VectorState& s, Input& in) { s.three[0].Rotate(&s.three[1 + in.Below(2)], in.Scalar<T>()); }},

    // Four components.
    {"TVector4(x, y, z, w)",
     [](VectorState& s, Input& in) {
         const TVector3<T>& v = s.three[in.Below(3)];
         s.four[0] = TVector4<T>(v.x, v.y, v.z, in.Scalar<T>());
     }},
    {"TVector4::OrthonormalXYZ",
     [](VectorState& s, Input& in) {
         const TVector4<T> v = s.four[in.Below(3)];
         const TVector4<T> before = s.four[0];
         const bool isMade = v.OrthonormalXYZ(&s.four[0], &s.four[1], &s.four[2]);
         Require(isMade == (v != TVector4<T>(0, 0, 0, 0)));
         Require(isMade || HaveSameBits(s.four[0], before));
     }},
    {"TVector4::OrthonormalXYZ over itself",
     [](VectorState& s, Input& in) {
         const unsigned int index = in.Below(3);
         TVector4<T>* const x = &s.four[index];
         x->OrthonormalXYZ(x, &s.four[(index + 1) % 3], &s.four[(index + 2) % 3]);
     }},

    // Complex numbers and quaternions.
    {"TComplex(real, imaginary)",
     [](VectorState& s, Input& in) { s.complex[0] = TComplex<T>(in.Scalar<T>(), s.complex[in.Below(3)].imaginary); }},
    {"TComplex: product",
     [](VectorState& s, Input& in) {
         TComplex<T>& a = s.complex[in.Below(3)];
         const TComplex<T>& b = s.complex[in.Below(3)];
         const TComplex<T> expected = a * b;
         Require(AreSameNumbers(a *= b, expected));
     }},
    {"TComplex: quotient",
     [](VectorState& s, Input& in) {
         TComplex<T>& a = s.complex[in.Below(3)];
         const TComplex<T>& b = s.complex[in.Below(3)];
         const TComplex<T> expected = a / b;
         Require(AreSameNumbers(a /= b, expected));
     }},
    {"TComplex: with a scalar",
     [](VectorState& s, Input& in) { AddScalar(s.complex[in.Below(3)], in); }},
    {"TQuaternion: with a scalar",
     [](VectorState& s, Input& in) { AddScalar(s.quaternion[in.Below(3)], in); }},
    {"TQuaternion(w, x, y, z)",
     [](VectorState& s, Input& in) {
         const TVector4<T>& v = s.four[in.Below(3)];
         s.quaternion[in.Below(3)] = TQuaternion<T>(v.w, v.x, v.y, v.z);
     }},
    {"TQuaternion(angle, axis)",
     [](VectorState& s, Input& in) {
         const T angle = in.Scalar<T>();
         s.quaternion[in.Below(3)] = TQuaternion<T>(angle, s.three[in.Below(3)]);
     }},
    {"TQuaternion(matrix)", [](VectorState& s, Input& in) { s.quaternion[in.Below(3)] = TQuaternion<T>(s.matrix3); }},
    {"TQuaternion: product",
     [](VectorState& s, Input& in) {
         TQuaternion<T>& a = s.quaternion[in.Below(3)];
         const TQuaternion<T>& b = s.quaternion[in.Below(3)];
         const TQuaternion<T> expected = a * b;
         Require(AreSameNumbers(a *= b, expected));
     }},
    {"TQuaternion::Conjugate",
     [](VectorState& s, Input& in) {
         TQuaternion<T>& q = s.quaternion[in.Below(3)];
         TQuaternion<T> twice = q;
         twice.Conjugate();
         twice.Conjugate();
         Require(HaveSameBits(twice, q));
         q.Conjugate();
     }},
    {"TQuaternion::ToMatrix", [](VectorState& s, Input& in) { s.matrix3 = s.quaternion[in.Below(3)].ToMatrix(); }},
    {"TQuaternion::GetRotation",
     [](VectorState& s, Input& in) {
         T angle;
         s.quaternion[in.Below(3)].GetRotation(&angle, &s.three[in.Below(3)]);
         Require(IsAngle(angle));
     }},
};

} // namespace CorvexFuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return CorvexFuzz::RunOneOf<CorvexFuzz::VectorState<float>, CorvexFuzz::VectorState<double>>(data, size);
}
