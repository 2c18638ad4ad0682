#pragma once

/// Reading numbers that a user wrote, for the examples. Nothing in it belongs to the library.

#include <sstream>
#include <stdexcept>
#include <string>

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
