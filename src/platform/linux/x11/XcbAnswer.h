// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <memory>

namespace stowpocket {

struct FreeXcbAnswer {
    void operator()(void* answer) const { std::free(answer); }
};
/// An answer, an error or an event of the X server, freed as xcb wants it.
template <class Answer>
using XcbAnswer = std::unique_ptr<Answer, FreeXcbAnswer>;

}  // namespace stowpocket
