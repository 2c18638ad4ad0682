#pragma once

/// The visibility of the classes outside the shared library.

/// Marks a class whose members are visible outside the shared library, which is otherwise built with hidden visibility.
/// It stands on the first declaration of each class template (see Forward.h): a visibility given later is ignored.
#define CORVEX_API __attribute__((visibility("default")))
