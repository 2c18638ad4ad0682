// The loops that one writes without a library.

#include "PeersAlgebra.h"

#include <cmath>
#include <memory>

namespace Peers
{

namespace
{

template <class T>
struct Vector
{
    T x, y, z;
};

template <class T>
std::vector<Vector<T>> ToVectors(const Array<T>& scalars)
{
    std::vector<Vector<T>> vectors(scalars.size() / 3);
    for (std::size_t i = 0; i < vectors.size(); ++i)
        vectors[i] = {scalars[3 * i], scalars[3 * i + 1], scalars[3 * i + 2]};
    return vectors;
}

template <class T>
Values ToValues(const std::vector<Vector<T>>& vectors)
{
    Values values;
    for (const Vector<T>& v : vectors) values.insert(values.end(), {v.x, v.y, v.z});
    return values;
}

} // namespace

template <class T>
Work PlainNormalise(const Array<T>& vectors)
{
    const auto in = std::make_shared<std::vector<Vector<T>>>(ToVectors(vectors));
    const auto out = std::make_shared<std::vector<Vector<T>>>(in->size());
    return {[=] {
                const Vector<T>* const from = in->data();
                Vector<T>* const to = out->data();
                const std::size_t count = in->size();
                for (std::size_t i = 0; i < count; ++i) {
                    const Vector<T> v = from[i];
                    const T length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
                    to[i] = {v.x / length, v.y / length, v.z / length};
                }
            },
            [=] { return ToValues(*out); }};
}

template <class T>
Work PlainDot(const Array<T>& a, const Array<T>& b)
{
    const auto left = std::make_shared<std::vector<Vector<T>>>(ToVectors(a));
    const auto right = std::make_shared<std::vector<Vector<T>>>(ToVectors(b));
    const auto out = std::make_shared<std::vector<T>>(left->size());
    return {[=] {
                const Vector<T>* const p = left->data();
                const Vector<T>* const q = right->data();
                T* const to = out->data();
                const std::size_t count = left->size();
                for (std::size_t i = 0; i < count; ++i) to[i] = p[i].x * q[i].x + p[i].y * q[i].y + p[i].z * q[i].z;
            },
            [=] { return Values(out->begin(), out->end()); }};
}

template <class T>
Work PlainCross(const Array<T>& a, const Array<T>& b)
{
    const auto left = std::make_shared<std::vector<Vector<T>>>(ToVectors(a));
    const auto right = std::make_shared<std::vector<Vector<T>>>(ToVectors(b));
    const auto out = std::make_shared<std::vector<Vector<T>>>(left->size());
    return {[=] {
                const Vector<T>* const from = left->data();
                const Vector<T>* const with = right->data();
                Vector<T>* const to = out->data();
                const std::size_t count = left->size();
                for (std::size_t i = 0; i < count; ++i) {
                    const Vector<T> p = from[i];
                    const Vector<T> q = with[i];
                    to[i] = {p.y * q.z - p.z * q.y, p.z * q.x - p.x * q.z, p.x * q.y - p.y * q.x};
                }
            },
            [=] { return ToValues(*out); }};
}

template Work PlainNormalise(const Array<float>&);
template Work PlainNormalise(const Array<double>&);
template Work PlainDot(const Array<float>&, const Array<float>&);
template Work PlainDot(const Array<double>&, const Array<double>&);
template Work PlainCross(const Array<float>&, const Array<float>&);
template Work PlainCross(const Array<double>&, const Array<double>&);

} // namespace Peers
