#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace orvo::cognex {

class AppletWrapper;
class FeatureContainer;

/// One frame grabber, by its index at the board library, and the applet on it.
/// Threads: host, no lock.
/// Owns:    the applet.
class BoardWrapper {
public:
    /// The caller wraps the object into an owning pointer. `index`: 0 to 7.
    static std::unique_ptr<BoardWrapper> create(int32_t index);

    BoardWrapper(const BoardWrapper&) = delete;
    BoardWrapper& operator=(const BoardWrapper&) = delete;
    virtual ~BoardWrapper();

    /// For a kind of board that needs work after its applet was loaded. None does yet.
    virtual void initialize() {}

    int32_t index() const { return m_index; }
    /// Throws std::runtime_error if the board has gone.
    int32_t boardType() const;
    /// The first part of the names of its channels. Throws as boardType() does.
    std::string boardName() const;
    /// What the library tells of the board, empty if it doesn't.
    std::string boardText() const;

    /// Null until an applet was loaded.
    std::shared_ptr<AppletWrapper> applet() const { return m_applet; }
    void setApplet(std::shared_ptr<AppletWrapper> applet) { m_applet = std::move(applet); }

private:
    explicit BoardWrapper(int32_t index);

    int32_t m_index;
    std::shared_ptr<FeatureContainer> m_features;   // stays empty: no feature is the board's own
    std::shared_ptr<AppletWrapper> m_applet;
};

/// Throws AIKException if the board has gone.
std::shared_ptr<BoardWrapper> locked(const std::weak_ptr<BoardWrapper>& board);

}   // namespace orvo::cognex
