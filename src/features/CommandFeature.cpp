#include "features/CommandFeature.h"

#include <stdexcept>

namespace orvo::cognex {

CommandFeature::CommandFeature()
    : AdapterFeature(FeatureType::Command),
      m_function([] { throw std::runtime_error("No function is defined for the command."); })
{}

void CommandFeature::doRead(char* /*val*/)
{
    throw std::runtime_error("Read function is not implemented for command feature.");
}

void CommandFeature::doWrite(const char* /*val*/)
{
    throw std::runtime_error("Write function is not implemented for command feature.");
}

void CommandFeature::doExecute()
{
    m_function();
}

}   // namespace orvo::cognex
