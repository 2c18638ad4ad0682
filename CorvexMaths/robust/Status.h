#pragma once

/// What every answer of the Robust family tells besides the answer: whether there is one, and if not, why.

#include <CorvexMaths/Deleted.h>

namespace Halmont::Orrin::CorvexMaths::Robust
{

/// Why an answer is there or not.
enum class Status
{
    Done,         ///< The answer holds.
    TooFewPoints, ///< There are fewer points than the answer needs, whatever lies where.
    Degenerate,   ///< The points, or the other arguments, leave the answer open.
    NotFinite,    ///< A coordinate is NaN or infinite.
    NotConverged  ///< The iteration reached its limit before it came to rest.
};

/// What the answers of this family have in common. Each is a small class made from its question: the constructor
/// computes, changes nothing that it is given, and leaves the answer in the object. Where the status is not
/// `Status::Done`, the other fields are as default-made, or tell how far it came; never NaN. Where memory runs out, the
/// constructor passes on the allocator's exception; a list of distances may then be empty, and all else that it was
/// given is as it was.
///
/// No tolerance of the family is absolute: each is relative to the data, with its reason above it in the source.
struct Answer
{
    /// Whether there is an answer, and if not, why; `Status::TooFewPoints` for an answer to no question.
    Status status = Status::TooFewPoints;

    /// Whether there is an answer: true for `Status::Done` alone.
    explicit operator bool() const { return status == Status::Done; }

    /// A status in words, for messages: in English, without a full stop. The text lives as long as the program.
    static const char* Describe(Status which)
    {
        switch (which) {
        case Status::Done:
            return "done";
        case Status::TooFewPoints:
            return "too few points";
        case Status::Degenerate:
            return "degenerate: the points leave the answer open";
        case Status::NotFinite:
            return "a coordinate is not finite";
        case Status::NotConverged:
            return "the iteration did not converge";
        }
        return "unknown status";
    }

    CORVEX_INCLUDE_STREAM_TO_PRINT(Answer);
};

} // namespace Halmont::Orrin::CorvexMaths::Robust
