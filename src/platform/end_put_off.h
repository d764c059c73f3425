// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

namespace platform {

/// Puts the sudden end of the program (program_end.h) off while it lives, so that two steps are
/// both done or neither: a file is made and noted as unfinished, a child started and listed. Where
/// the end has begun, it waits for ever: nothing new comes into being behind the clean-up.
///
/// Only for steps that take a moment: the end waits no longer than that. May be nested in one
/// thread. Callable from any thread.
class EndPutOff {
public:
    EndPutOff();
    ~EndPutOff();
    EndPutOff(const EndPutOff&) = delete;
    EndPutOff& operator=(const EndPutOff&) = delete;
};

/// For the end alone: waits until nobody puts it off, at most that long, and from then on lets
/// nobody. False where somebody still does.
bool beginEnd(std::chrono::milliseconds patience);

} // namespace platform
