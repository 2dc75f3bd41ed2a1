#include "features/ProxyFeature.h"

#include "AIKException.h"

namespace orvo::cognex {

namespace {

[[noreturn]] void refuse()
{
    throw AIKException("This function is not implemented.");
}

}   // namespace

ProxyFeature::ProxyFeature()
    : m_readFunction([](char*) { refuse(); }),
      m_writeFunction([](const char*) { refuse(); }),
      m_executeFunction(refuse)
{}

}   // namespace orvo::cognex
