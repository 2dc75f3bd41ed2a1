#pragma once

#include <memory>
#include <string>

#include "tools/logging/Logging.h"

namespace orvo::cognex {

class AppletWrapper;
class BoardWrapper;

/// Loads one kind of applet file onto a board. Lives as long as the opening of the board.
/// Threads: host.
/// Throws:  AIKException from load(): "brd error code: N" if the board refuses the file.
class AppletLoader {
public:
    AppletLoader(const AppletLoader&) = delete;
    AppletLoader& operator=(const AppletLoader&) = delete;
    virtual ~AppletLoader() = default;

    virtual tools::logging::Logger* logger() { return m_logger.get(); }
    virtual std::unique_ptr<AppletWrapper> load() = 0;

protected:
    AppletLoader(std::string path, std::weak_ptr<BoardWrapper> board);

    /// What the board library has for opening a board: by an applet, or by a configuration.
    using OpenBoard = void*(const char* path, uint32_t boardIndex, int32_t flags);
    std::unique_ptr<AppletWrapper> loadWith(OpenBoard* open) const;

    /// Whether the path holds `mark`, which is in upper case, anywhere and in any case: a folder's name
    /// counts.
    static bool holds(const std::string& path, const char* mark);

private:
    tools::logging::CachedLogger m_logger{"orvo.Cognex.AppletLoader"};
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

/// Loads an applet in the form of a library: "DLL" in its path.
class DllLoader : public AppletLoader {
public:
    /// Throws AIKException if the path is none of this kind.
    static std::unique_ptr<AppletLoader> create(const std::string& path, std::weak_ptr<BoardWrapper> board);

    std::unique_ptr<AppletWrapper> load() override;

private:
    using AppletLoader::AppletLoader;
};

/// Loads an applet in the form of a hardware applet file: "HAP" in its path.
class HapLoader : public AppletLoader {
public:
    /// Throws AIKException if the path is none of this kind.
    static std::unique_ptr<AppletLoader> create(const std::string& path, std::weak_ptr<BoardWrapper> board);

    std::unique_ptr<AppletWrapper> load() override;

private:
    using AppletLoader::AppletLoader;
};

/// Loads a configuration of an applet: ".MCF" in its path.
class McfLoader : public AppletLoader {
public:
    /// Throws AIKException if the path is none of this kind.
    static std::unique_ptr<AppletLoader> create(const std::string& path, std::weak_ptr<BoardWrapper> board);

    std::unique_ptr<AppletWrapper> load() override;

private:
    using AppletLoader::AppletLoader;
};

}   // namespace orvo::cognex
