// What GLM does for comparison.

#include "PeersAlgebra.h"

#include <glm/glm.hpp>

#include <memory>

namespace Peers
{

namespace
{

template <class T>
using Vectors = std::vector<glm::tvec3<T>>;

template <class T>
std::shared_ptr<Vectors<T>> ToVectors(const Array<T>& scalars)
{
    const auto vectors = std::make_shared<Vectors<T>>(scalars.size() / 3);
    for (std::size_t i = 0; i < vectors->size(); ++i)
        (*vectors)[i] = glm::tvec3<T>(scalars[3 * i], scalars[3 * i + 1], scalars[3 * i + 2]);
    return vectors;
}

template <class T>
Values ToValues(const Vectors<T>& vectors)
{
    Values values;
    for (const glm::tvec3<T>& v : vectors) values.insert(values.end(), {v.x, v.y, v.z});
    return values;
}

/// The matrices transposed: GLM's lie by columns. So are their products the transposed ones in the other order.
std::shared_ptr<std::vector<glm::dmat4>> ToTransposed(const Array<double>& scalars)
{
    const auto matrices = std::make_shared<std::vector<glm::dmat4>>(scalars.size() / 16);
    for (std::size_t i = 0; i < scalars.size(); ++i)
        (*matrices)[i / 16][static_cast<int>(i % 16 / 4)][static_cast<int>(i % 4)] = scalars[i];
    return matrices;
}

} // namespace

template <class T>
Work GlmNormalise(const Array<T>& vectors)
{
    const auto in = ToVectors(vectors);
    const auto out = std::make_shared<Vectors<T>>(in->size());
    return {[=] {
                const glm::tvec3<T>* const from = in->data();
                glm::tvec3<T>* const to = out->data();
                const std::size_t count = in->size();
                for (std::size_t i = 0; i < count; ++i) to[i] = glm::normalize(from[i]);
            },
            [=] { return ToValues<T>(*out); }};
}

template <class T>
Work GlmDot(const Array<T>& a, const Array<T>& b)
{
    const auto left = ToVectors(a);
    const auto right = ToVectors(b);
    const auto out = std::make_shared<std::vector<T>>(left->size());
    return {[=] {
                const glm::tvec3<T>* const p = left->data();
                const glm::tvec3<T>* const q = right->data();
                T* const to = out->data();
                const std::size_t count = left->size();
                for (std::size_t i = 0; i < count; ++i) to[i] = glm::dot(p[i], q[i]);
            },
            [=] { return Values(out->begin(), out->end()); }};
}

template <class T>
Work GlmCross(const Array<T>& a, const Array<T>& b)
{
    const auto left = ToVectors(a);
    const auto right = ToVectors(b);
    const auto out = std::make_shared<Vectors<T>>(left->size());
    return {[=] {
                const glm::tvec3<T>* const p = left->data();
                const glm::tvec3<T>* const q = right->data();
                glm::tvec3<T>* const to = out->data();
                const std::size_t count = left->size();
                for (std::size_t i = 0; i < count; ++i) to[i] = glm::cross(p[i], q[i]);
            },
            [=] { return ToValues<T>(*out); }};
}

Work GlmProduct4(const Array<double>& a, const Array<double>& b)
{
    const auto left = ToTransposed(a);
    const auto right = ToTransposed(b);
    const auto out = std::make_shared<std::vector<glm::dmat4>>(left->size());
    return {[=] {
                const glm::dmat4* const p = left->data();
                const glm::dmat4* const q = right->data();
                glm::dmat4* const to = out->data();
                const std::size_t count = left->size();
                for (std::size_t i = 0; i < count; ++i) to[i] = q[i] * p[i];
            },
            [=] {
                Values values;
                for (const glm::dmat4& matrix : *out)
                    for (int r = 0; r < 4; ++r)
                        for (int c = 0; c < 4; ++c) values.push_back(matrix[r][c]);
                return values;
            }};
}

template Work GlmNormalise(const Array<float>&);
template Work GlmNormalise(const Array<double>&);
template Work GlmDot(const Array<float>&, const Array<float>&);
template Work GlmDot(const Array<double>&, const Array<double>&);
template Work GlmCross(const Array<float>&, const Array<float>&);
template Work GlmCross(const Array<double>&, const Array<double>&);

} // namespace Peers
