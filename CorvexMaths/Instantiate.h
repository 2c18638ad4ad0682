#pragma once

/// The explicit instantiations of class templates, one macro for each shape.
///
/// The library compiles each class template once for each of its scalars and vectors, and the header of the class tells
/// programs not to. Both lists are one line with the same macro, whose first argument is `extern` in the header and
/// empty in the source:
///
///     CORVEX_INSTANTIATE_SCALARS(extern, class, TSphere);   // TSphere.h
///     CORVEX_INSTANTIATE_SCALARS(, class, TSphere);         // TSphere.cpp
///
/// A shape that one header alone has gets a macro of its own beside the class, named CORVEX_INSTANTIATE_ and the shape,
/// of the arguments `linkage` and T; it stays defined for the source. The line stands in the namespace of the template
/// that is instantiated, at the end of the file and without indentation.

/// `Class<T>`, declared as a `kind` of `class` or `struct`, for both scalars.
#define CORVEX_INSTANTIATE_SCALARS(linkage, kind, Class)                                                               \
    linkage template kind Class<float>;                                                                                \
    linkage template kind Class<double>

/// `Class<T, V>`, one of the classes of points, for both scalars and all three vectors.
#define CORVEX_INSTANTIATE_SETS(linkage, Class)                                                                        \
    linkage template class Class<float, TVector2>;                                                                     \
    linkage template class Class<float, TVector3>;                                                                     \
    linkage template class Class<float, TVector4>;                                                                     \
    linkage template class Class<double, TVector2>;                                                                    \
    linkage template class Class<double, TVector3>;                                                                    \
    linkage template class Class<double, TVector4>

/// `Container<Class<T, V>*>`: a container of pointers to one of the classes of points, for both scalars and all three
/// vectors. Stands in the namespace of the containers.
#define CORVEX_INSTANTIATE_SET_POINTERS(linkage, Container, Class)                                                     \
    linkage template class Container<CorvexMaths::Class<float, CorvexMaths::TVector2>*>;                               \
    linkage template class Container<CorvexMaths::Class<float, CorvexMaths::TVector3>*>;                               \
    linkage template class Container<CorvexMaths::Class<float, CorvexMaths::TVector4>*>;                               \
    linkage template class Container<CorvexMaths::Class<double, CorvexMaths::TVector2>*>;                              \
    linkage template class Container<CorvexMaths::Class<double, CorvexMaths::TVector3>*>;                              \
    linkage template class Container<CorvexMaths::Class<double, CorvexMaths::TVector4>*>
