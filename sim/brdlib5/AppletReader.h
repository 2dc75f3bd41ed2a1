#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "sim/brdlib5/Applet.h"
#include "sim/json/JsonObject.h"

namespace orvo::sim {

/// Turns an applet file into an Applet. What the file says of DMA ports on its top level holds for all of
/// them, and a port's own members win. Throws JsonError.
class AppletReader {
public:
    AppletReader(std::string path, int32_t boardType);

    Applet read(JsonObject& object);

private:
    /// A port whose size and format may still come from its pictures.
    struct Draft {
        DmaDescription dma;
        std::optional<uint32_t> width, height;
        std::optional<PixelFormat> format;
    };

    void readDma(JsonObject& object, Draft& draft);
    void readPictures(const JsonValue& source, PictureChoice& pictures);
    void readProcess(const JsonValue& entry, const Draft& common, Applet& applet);
    /// `members` null: a port of which the file says nothing of its own.
    void addDma(const std::string& place, JsonObject* members, const Draft& common,
                ProcessDescription& process);
    static void readCameraPort(const JsonValue& entry, ProcessDescription& process);
    void addPortForEachDma(ProcessDescription& process);
    void addDefaultProcess(const Draft& common, Applet& applet);
    DmaDescription finished(Draft draft, const std::string& place) const;
    void readOwnFile(JsonObject& object, Applet& applet) const;

    const std::string m_path;
    const int32_t m_boardType;
    std::map<std::string, std::shared_ptr<const PictureFolder>> m_folders;   // each is read once
    std::set<uint32_t> m_dmaIds;
    int32_t m_nextCameraPort = 0;
};

}   // namespace orvo::sim
