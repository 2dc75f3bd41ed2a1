#pragma once

#include <stdexcept>

namespace orvo::aikctl {

/// A call that the adapter refused; what() is the adapter's own text, word for word.
class AdapterFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}   // namespace orvo::aikctl
