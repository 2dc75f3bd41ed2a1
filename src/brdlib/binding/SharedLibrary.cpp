#include "brdlib/binding/SharedLibrary.h"

namespace orvo::cognex {

SharedLibrary::SharedLibrary(const std::string& path, Unload unload)
    : m_module(os::loadLibrary(path, os::Neighbours::AsTheSystemDoes, &m_error)), m_unload(unload)
{}

SharedLibrary::~SharedLibrary()
{
    if (m_module && m_unload == Unload::OnDestruction)
        os::freeLibrary(m_module);
}

}   // namespace orvo::cognex
