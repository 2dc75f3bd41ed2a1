#include "brdlib/BoardWrapper.h"

#include <array>
#include <stdexcept>

#include "AIKException.h"
#include "brdlib/AppletWrapper.h"
#include "brdlib/binding/BrdFunctions.h"
#include "features/FeatureContainer.h"

namespace orvo::cognex {

namespace {

constexpr int32_t kInformationBoardText = 1012;
constexpr int32_t kNoBoard = -1;

}   // namespace

std::unique_ptr<BoardWrapper> BoardWrapper::create(int32_t index)
{
    return std::unique_ptr<BoardWrapper>(new BoardWrapper(index));
}

BoardWrapper::BoardWrapper(int32_t index) : m_index(index), m_features(std::make_shared<FeatureContainer>())
{}

BoardWrapper::~BoardWrapper() = default;

int32_t BoardWrapper::boardType() const
{
    const int32_t type = Brd_getBoardType(m_index);
    if (type == kNoBoard)
        throw std::runtime_error("Cannot detect board type");
    return type;
}

std::string BoardWrapper::boardName() const
{
    const char* const name = Brd_getBoardNameByType(boardType(), 1);
    return name ? name : "";
}

std::string BoardWrapper::boardText() const
{
    std::array<char, 256> text{};
    auto length = static_cast<uint32_t>(text.size() - 1);
    Brd_getSystemInformation(nullptr, kInformationBoardText, 0, m_index, text.data(), &length);
    return text.data();
}

std::shared_ptr<BoardWrapper> locked(const std::weak_ptr<BoardWrapper>& board)
{
    return lockedOrThrow(board, "No board is connected");
}

}   // namespace orvo::cognex
