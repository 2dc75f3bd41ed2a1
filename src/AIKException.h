#pragma once

#include <exception>
#include <memory>
#include <string>
#include <utility>

namespace orvo::cognex {

/// A failure with a text for the host and nothing else: there is no code number. A feature container wraps
/// it in what the host was doing; any other exception reaches the host bare.
class AIKException : public std::exception {
public:
    explicit AIKException(std::string text) : m_text(std::move(text)) {}

    const char* what() const noexcept override { return m_text.c_str(); }

private:
    std::string m_text;
};

/// No result yet, ask again: no failure at the interface. Catch it before AIKException.
class Pending : public AIKException {
public:
    using AIKException::AIKException;
};

/// The object, kept for a single use. Throws `Failure` with the text if it has gone.
template <typename Failure = AIKException, typename T>
std::shared_ptr<T> lockedOrThrow(const std::weak_ptr<T>& object, const char* text)
{
    auto owned = object.lock();
    if (!owned)
        throw Failure(text);
    return owned;
}

}   // namespace orvo::cognex
