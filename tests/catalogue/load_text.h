// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>

#include "catalogue/definition_file.h"
#include "support/memory_stream.h"

namespace catalogue {

inline Catalogue loadText(std::string text) {
    support::MemoryStream stream(std::move(text));
    return loadDefinition(stream, "panel.txt").value();
}

inline const Mutation& mutationOf(const Catalogue& catalogue, std::size_t domain,
                                  std::size_t mutation) {
    return *catalogue.domains.value()[domain]->mutationMutAr.value()[mutation];
}

inline std::size_t mutationCountOf(const Catalogue& catalogue, std::size_t domain) {
    return catalogue.domains.value()[domain]->mutationMutAr.value().size();
}

} // namespace catalogue
