#pragma once

#include <exception>
#include <stdexcept>
#include <string>
#include <typeinfo>

#include "AIKException.h"

namespace orvo::test {

/// What `act` says when it fails with an exception of exactly this type; a note for any other outcome.
template <typename Failure, typename Act>
std::string failureText(Act&& act)
{
    try {
        act();
    } catch (const std::exception& failure) {
        const bool expected = typeid(failure) == typeid(Failure);
        return expected ? failure.what() : std::string(typeid(failure).name()) + ": " + failure.what();
    }
    return "no failure";
}

// The three kinds that differ for hosts: a container wraps the first and passes on the second, and the third
// asks to come again.
template <typename Act>
std::string aikFailure(Act&& act)
{
    return failureText<cognex::AIKException>(act);
}

template <typename Act>
std::string bareFailure(Act&& act)
{
    return failureText<std::runtime_error>(act);
}

template <typename Act>
std::string pending(Act&& act)
{
    return failureText<cognex::Pending>(act);
}

}   // namespace orvo::test
