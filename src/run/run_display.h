// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "run/pair_matching.h"

namespace run {

/// The display of a run: the five text fields and the error line that a patient's run writes.
/// Called from the run's thread and from workers; an implementation brings each call to the main
/// thread, in order, and may leave out a counter's text when a later one follows.
class RunDisplay : public run::MatchingDisplay {
public:
    virtual void showFile1(const std::string& text) = 0;
    virtual void showFile2(const std::string& text) = 0;
};

} // namespace run
