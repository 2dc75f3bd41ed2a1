#include "camera/DetectedConnection.h"

#include <iterator>
#include <stdexcept>

namespace orvo::cognex {

void DetectedConnection::addCameras(std::vector<std::shared_ptr<Camera>>& cameras)
{
    m_cameras.insert(m_cameras.end(), std::make_move_iterator(cameras.begin()),
                     std::make_move_iterator(cameras.end()));
    cameras.clear();
}

std::weak_ptr<Camera> DetectedConnection::camera(uint64_t index) const
{
    if (index >= m_cameras.size())
        throw std::out_of_range("invalid vector<T> subscript");   // the words that hosts know
    return m_cameras[index];
}

}   // namespace orvo::cognex
