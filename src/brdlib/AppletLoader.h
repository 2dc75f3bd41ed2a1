#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "tools/logging/Logging.h"

namespace orvo::cognex {

class AppletLoader;
class AppletWrapper;
class BoardWrapper;

/// One kind of applet file: how its path is known, and how the board library opens a board with it.
struct LoaderKind {
    const char* mark;   // in upper case. Anywhere in the path and in any case: a folder's name counts
    const char* refusal;
    void* (*open)(const char* path, uint32_t boardIndex, int32_t flags);

    /// Throws AIKException, with the refusal, if the path is not of this kind.
    std::unique_ptr<AppletLoader> create(const std::string& path, std::weak_ptr<BoardWrapper> board) const;
};

extern const LoaderKind kDllLoader;   // an applet in the form of a library
extern const LoaderKind kHapLoader;   // a hardware applet file
extern const LoaderKind kMcfLoader;   // a configuration of an applet

/// Loads an applet file onto a board. Lives as long as the opening of the board.
/// Threads: host.
/// Throws:  AIKException from load(): "brd error code: N" if the board refuses the file.
class AppletLoader {
public:
    /// `kind` must outlive this.
    AppletLoader(const LoaderKind& kind, std::string path, std::weak_ptr<BoardWrapper> board);
    AppletLoader(const AppletLoader&) = delete;
    AppletLoader& operator=(const AppletLoader&) = delete;
    virtual ~AppletLoader() = default;

    virtual tools::logging::Logger* logger() { return m_logger.get(); }
    std::unique_ptr<AppletWrapper> load() const;

private:
    tools::logging::CachedLogger m_logger{"orvo.Cognex.AppletLoader"};
    const LoaderKind& m_kind;
    std::string m_path;
    std::weak_ptr<BoardWrapper> m_board;
};

/// The path of the board's applet, from the environment variable of the board.
/// Throws AIKException, with the variable's name, if it isn't set or names no regular file.
std::string appletPath(const std::weak_ptr<BoardWrapper>& board);

/// The loader for the board's applet, or null if no loader takes its path. Throws as appletPath() does.
std::unique_ptr<AppletLoader> chooseLoader(const std::weak_ptr<BoardWrapper>& board);

/// The name of the environment variable of a board: "ORVO_COGNEX_APPLET_" and its index.
std::string appletVariable(const BoardWrapper& board);

}   // namespace orvo::cognex
