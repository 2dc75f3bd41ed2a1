#pragma once

#include <array>
#include <stdexcept>
#include <string_view>

#include "aik/aik.h"

namespace orvo::aikctl {

/// A call that the adapter refused; what() is the adapter's own text, word for word.
class AdapterFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;

    /// Whether the reason is that the feature is not available at the moment.
    bool isFeatureUnavailable() const
    {
        return std::string_view(what()).find("Feature is not available.") != std::string_view::npos;
    }
};

/// The exports of a loaded adapter: a pointer for each, under its name.
struct Exports {
#define AIKCTL_MEMBER(name, ordinal) AIK_##name name = nullptr;
    AIK_EXPORTS(AIKCTL_MEMBER)
#undef AIKCTL_MEMBER
};

/// Calls an export with a text buffer of ours as its first argument. Throws AdapterFailure.
template <typename Function, typename... Arguments>
void call(Function function, Arguments... arguments)
{
    std::array<char, AIK_ERRSTR_SIZE> text{};
    if (function(text.data(), arguments...) != AIK_OK)
        throw AdapterFailure(text.data());
}

}   // namespace orvo::aikctl
