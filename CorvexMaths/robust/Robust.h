#pragma once

/// Every answer of the Robust family: fits, alignment, hulls, splines and zones that hold on every input, or say why
/// there is none.

#include <CorvexMaths/robust/Status.h>
