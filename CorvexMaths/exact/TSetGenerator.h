#pragma once

/// TSetGenerator: walks all combinations or permutations of a number of indices.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Precondition.h>

#include <cstring>
#include <type_traits>

namespace Halmont::Orrin::CorvexMaths
{

/// Walks all sets of k of the integers from 0 to n - 1, as combinations or as permutations, and hands each one to the
/// handlers that were added. Nothing is stored of them. T is an unsigned integer type, `unsigned char` to
/// `unsigned long long`; n and k are values of it.
///
/// A handler is a free function, or a method together with the object to call it on: of any class, const or not, of any
/// return type, which is ignored. It takes one pointer, to the k values of the present set, as `T*` or `const T*`. They
/// change once it has returned and are gone once the walk has: what is to be kept must be copied.
///
/// \code
/// struct Triangles
/// {
///     void Take(const unsigned int* corners) { /* corners[0] < corners[1] < corners[2] */ }
/// };
/// Triangles triangles;
/// TSetGenerator<unsigned int> generator;
/// generator.AddCombinationMethod(&triangles, &Triangles::Take);
/// generator.AddCombinationFunction(+[](const unsigned int* corners) { std::printf("%u\n", corners[0]); });
/// generator.GenerateCombinations(pointCount, 3);
/// \endcode
///
/// Sets come in lexicographic order. Each goes to the methods, in the order in which they were added, then to the
/// functions. A handler may not add handlers to its generator, assign to it or destroy it; it may start another walk.
/// An exception that it throws passes through and ends the walk; the set is then not released, so that a pointer to it
/// which the exception carries stays valid.
///
/// Copies share their handlers, which are released with the last of them. Adding one to a copy first gives it handlers
/// of its own. Objects to call methods on are never owned. That objects, methods and functions are not null is a
/// precondition, which debug builds check. There are no locks, and the reference count is not atomic: copies that share
/// handlers belong to one thread. Where memory runs out, the allocator's exception leaves the handlers as they were.
template <class T>
class CORVEX_API TSetGenerator
{
    static_assert(std::is_unsigned_v<T>, "the values of a set are unsigned integers");

public:
    /// A generator without handlers.
    TSetGenerator() = default;
    /// A generator that shares the handlers of another; one added to either later is not added to the other.
    TSetGenerator(const TSetGenerator& other) { *this = other; }
    /// Releases the handlers, unless a copy shares them; never the objects to call methods on.
    ~TSetGenerator() { Release(); }
    /// Drops the handlers and shares those of another generator, which may be this one.
    TSetGenerator& operator=(const TSetGenerator& other);

    /// Adds a method to be called for each combination, after the methods already there: `(object->*method)(set)`.
    /// Object and method are not null, and the object must outlive the walks. A method added twice is called twice.
    /// Costs time in proportion to the handlers of this kind that are there, or of all if they are shared.
    template <class Object, class Member>
    void AddCombinationMethod(Object* object, Member method)
    {
        CORVEX_PRECONDITION("TSetGenerator::AddCombinationMethod", object != nullptr && method != nullptr, object,
                            method != nullptr);
        Append(combinationMethods, combinationMethodCount, MethodHandler(object, method));
    }
    /// Adds a function to be called for each combination, after all methods and the functions already there. It is not
    /// null. One added twice is called twice. Costs time in proportion to the handlers of this kind that are there, or
    /// of all if they are shared.
    template <class Result, class Argument>
    void AddCombinationFunction(Result (*function)(Argument))
    {
        CORVEX_PRECONDITION("TSetGenerator::AddCombinationFunction", function != nullptr, function != nullptr);
        Append(combinationFunctions, combinationFunctionCount, FunctionHandler(function));
    }
    /// Adds a method to be called for each permutation, after the methods already there: `(object->*method)(set)`.
    /// Object and method are not null, and the object must outlive the walks. A method added twice is called twice.
    /// Costs time in proportion to the handlers of this kind that are there, or of all if they are shared.
    template <class Object, class Member>
    void AddPermutationMethod(Object* object, Member method)
    {
        CORVEX_PRECONDITION("TSetGenerator::AddPermutationMethod", object != nullptr && method != nullptr, object,
                            method != nullptr);
        Append(permutationMethods, permutationMethodCount, MethodHandler(object, method));
    }
    /// Adds a function to be called for each permutation, after all methods and the functions already there. It is not
    /// null. One added twice is called twice. Costs time in proportion to the handlers of this kind that are there, or
    /// of all if they are shared.
    template <class Result, class Argument>
    void AddPermutationFunction(Result (*function)(Argument))
    {
        CORVEX_PRECONDITION("TSetGenerator::AddPermutationFunction", function != nullptr, function != nullptr);
        Append(permutationFunctions, permutationFunctionCount, FunctionHandler(function));
    }

    /// Calls the handlers of combinations for every choice of k of n values, each in ascending order, the choices in
    /// lexicographic order: of 2 of 3 (0, 1), (0, 2), (1, 2). Without handlers the walk runs all the same. No calls for
    /// a k of 0 or above n. Recurses k deep and allocates k values.
    void GenerateCombinations(T n, T k);
    /// Calls the handlers of permutations for every arrangement of k different ones of n values, in lexicographic
    /// order: of 2 of 3 (0, 1), (0, 2), (1, 0), (1, 2), (2, 0), (2, 1). Without handlers the walk runs all the same. No
    /// calls for a k of 0 or above n. Recurses k deep and allocates k values.
    void GeneratePermutations(T n, T k);

private:
    /// A method and the object to call it on. Their types are known to `call` alone.
    struct MethodHandler
    {
        const void* object = nullptr;
        unsigned char method[2 * sizeof(void*)] = {}; ///< The bytes of the pointer to member.
        void (*call)(const MethodHandler& handler, T* set) = nullptr;

        MethodHandler() = default;
        template <class Object, class Member>
        MethodHandler(Object* target, Member member) : object(target), call(&Call<Object, Member>)
        {
            static_assert(std::is_member_function_pointer_v<Member>, "a method is given as &Class::Method");
            static_assert(std::is_invocable_v<Member, Object*, T*>, "a method takes a T* or a const T*");
            static_assert(sizeof(Member) <= sizeof(method) && std::is_trivially_copyable_v<Member>);
            std::memcpy(method, &member, sizeof(Member));
        }

        template <class Object, class Member>
        static void Call(const MethodHandler& handler, T* set)
        {
            Member member;
            std::memcpy(&member, handler.method, sizeof(Member));
            static_cast<void>((static_cast<Object*>(const_cast<void*>(handler.object))->*member)(set));
        }
    };

    /// A function. Its type is known to `call` alone.
    struct FunctionHandler
    {
        void (*function)() = nullptr;
        void (*call)(const FunctionHandler& handler, T* set) = nullptr;

        FunctionHandler() = default;
        template <class Result, class Argument>
        explicit FunctionHandler(Result (*target)(Argument))
            : function(reinterpret_cast<void (*)()>(target)), call(&Call<Result, Argument>)
        {
            static_assert(std::is_invocable_v<Result (*)(Argument), T*>, "a function takes a T* or a const T*");
        }

        template <class Result, class Argument>
        static void Call(const FunctionHandler& handler, T* set)
        {
            static_cast<void>(reinterpret_cast<Result (*)(Argument)>(handler.function)(set));
        }
    };

    /// Walks the combinations that begin with the `position` values of the set and go on with one above `previous`.
    void Combinate(T n, T k, T* set, T previous, T position);
    /// Walks the permutations that begin with the `position` values of the set.
    void Permute(T n, T k, T position, T* set);

    void Append(MethodHandler*& handlers, unsigned int& count, const MethodHandler& handler);
    void Append(FunctionHandler*& handlers, unsigned int& count, const FunctionHandler& handler);
    /// Makes the handlers this generator's alone.
    void Own();
    /// Gives up a share of the handlers, and deletes them with the last; the fields keep their values.
    void Release();

    MethodHandler* combinationMethods = nullptr;
    FunctionHandler* combinationFunctions = nullptr;
    unsigned int combinationMethodCount = 0;
    unsigned int combinationFunctionCount = 0;
    MethodHandler* permutationMethods = nullptr;
    FunctionHandler* permutationFunctions = nullptr;
    unsigned int permutationMethodCount = 0;
    unsigned int permutationFunctionCount = 0;
    /// The reference count of the four blocks; null while there are none.
    unsigned int* owners = nullptr;
};

/// Every unsigned integer type.
#define CORVEX_INSTANTIATE_SET_GENERATORS(linkage)                                                                     \
    linkage template class TSetGenerator<unsigned char>;                                                               \
    linkage template class TSetGenerator<unsigned short>;                                                              \
    linkage template class TSetGenerator<unsigned int>;                                                                \
    linkage template class TSetGenerator<unsigned long>;                                                               \
    linkage template class TSetGenerator<unsigned long long>

CORVEX_INSTANTIATE_SET_GENERATORS(extern);

} // namespace Halmont::Orrin::CorvexMaths
