#pragma once

/// TSetGenerator: walks all combinations or permutations of a number of indices.

#include <CorvexMaths/Forward.h>

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
/// Copies share their handlers, which are released with the last of them. Adding one to a copy gives it a share of its
/// own first. Objects to call methods on are never owned.
template <class T>
class CORVEX_API TSetGenerator
{
    static_assert(std::is_unsigned_v<T>, "the values of a set are unsigned integers");

public:
    /// No handlers.
    TSetGenerator() = default;
    /// Shares the handlers of another generator.
    TSetGenerator(const TSetGenerator& other);
    /// Releases the handlers, unless a copy shares them.
    ~TSetGenerator();
    /// Lets go of the handlers and shares those of another generator.
    TSetGenerator& operator=(const TSetGenerator& other);

    /// Adds a method to be called for each combination: `(object->*method)(set)`. The object must outlive the walks.
    /// Like the other three forms it costs time in proportion to the handlers that are there.
    template <class Object, class Member>
    void AddCombinationMethod(Object* object, Member method)
    {
        Append(combinationMethods, combinationMethodCount, MethodHandler(object, method));
    }
    /// Adds a function to be called for each combination.
    template <class Result, class Argument>
    void AddCombinationFunction(Result (*function)(Argument))
    {
        Append(combinationFunctions, combinationFunctionCount, FunctionHandler(function));
    }
    /// Adds a method to be called for each permutation: `(object->*method)(set)`. The object must outlive the walks.
    template <class Object, class Member>
    void AddPermutationMethod(Object* object, Member method)
    {
        Append(permutationMethods, permutationMethodCount, MethodHandler(object, method));
    }
    /// Adds a function to be called for each permutation.
    template <class Result, class Argument>
    void AddPermutationFunction(Result (*function)(Argument))
    {
        Append(permutationFunctions, permutationFunctionCount, FunctionHandler(function));
    }

    /// Calls the handlers for every combination of k of n values, each in ascending order: of 2 of 3 (0, 1), (0, 2),
    /// (1, 2). No calls for a k of 0 or above n. Recurses k deep.
    void GenerateCombinations(T n, T k);
    /// Calls the handlers for every arrangement of k different ones of n values: of 2 of 3 (0, 1), (0, 2), (1, 0),
    /// (1, 2), (2, 0), (2, 1). No calls for a k of 0 or above n. Recurses k deep.
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
    /// Lets go of the share of the handlers; the fields keep their values.
    void Release();

    MethodHandler* combinationMethods = nullptr;
    FunctionHandler* combinationFunctions = nullptr;
    unsigned int combinationMethodCount = 0;
    unsigned int combinationFunctionCount = 0;
    MethodHandler* permutationMethods = nullptr;
    FunctionHandler* permutationFunctions = nullptr;
    unsigned int permutationMethodCount = 0;
    unsigned int permutationFunctionCount = 0;
    /// How many generators share the four blocks; null while there are none.
    unsigned int* owners = nullptr;
};

extern template class TSetGenerator<unsigned char>;
extern template class TSetGenerator<unsigned short>;
extern template class TSetGenerator<unsigned int>;
extern template class TSetGenerator<unsigned long>;
extern template class TSetGenerator<unsigned long long>;

} // namespace Halmont::Orrin::CorvexMaths
