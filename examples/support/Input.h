#pragma once

/// Reading numbers that a user wrote, for the examples. Nothing in it belongs to the library.

#include <cstddef>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// Something wrong with the arguments or a file, told to the user.
struct InputError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// The number that a whole text stands for; `what` names it when it stands for none.
inline double ReadNumber(const std::string& text, const std::string& what)
{
    std::istringstream stream(text);
    double number = 0;
    if (!(stream >> number) || !stream.eof()) throw InputError(what + " should be a number, not \"" + text + "\"");
    return number;
}

/// The words of a command line, taken one after the other.
class Arguments
{
public:
    explicit Arguments(std::vector<std::string> given) : words(std::move(given)) {}

    bool AreLeft() const { return next < words.size(); }
    std::string Take() { return words[next++]; }

    /// The word after an option.
    std::string ValueOf(const std::string& option)
    {
        if (!AreLeft()) throw InputError(option + " needs a value");
        return Take();
    }

private:
    std::vector<std::string> words;
    std::size_t next = 0;
};
