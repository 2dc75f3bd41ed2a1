#include "sim/brdlib5/Applet.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <utility>

#include "os/Os.h"
#include "os/PathText.h"
#include "sim/brdlib5/ParameterDescription.h"
#include "sim/json/Json.h"
#include "sim/pictures/PlayedFolder.h"
#include "sim/seam/BoardTypes.h"

namespace orvo::sim {

namespace {

constexpr int64_t kMostDmaPorts = 64;   // of a process
constexpr int64_t kHighestId = 65'535;
constexpr int64_t kLargestExtent = 65'536;   // pixels
constexpr uint32_t kDefaultWidth = 640, kDefaultHeight = 480;
constexpr double kHighestRate = 1e6;   // pictures per second
constexpr int64_t kMostInfo = 1'000'000;

void readExtent(JsonObject& object, const char* key, uint32_t& extent, int64_t least)
{
    if (const auto value = object.find(key))
        extent = static_cast<uint32_t>(value->integer(least, kLargestExtent));
}

void readExtent(JsonObject& object, const char* key, std::optional<uint32_t>& extent)
{
    if (const auto value = object.find(key))
        extent = static_cast<uint32_t>(value->integer(0, kLargestExtent));
}

/// One of those that old applets don't have; all others have to be there.
int32_t lackingId(const JsonValue& value)
{
    using namespace built_in;
    const int64_t wanted = value.integer(0, kHighestId);
    for (const ParameterName& known : {kDmaCount, kCameraPortCount, kProcessCount, kDmaId, kCameraPort})
        if (wanted == known.id)
            return known.id;
    value.refuse("must be 3050, 3060, 3070, 3080 or 3090");
}

/// What the file says must fit the limits; what it leaves out is made to fit.
uint32_t settled(const std::string& place, std::optional<uint32_t> given, uint32_t otherwise, uint32_t most,
                 uint32_t step)
{
    const uint32_t extent = given.value_or(std::min(otherwise, most) / step * step);
    if (extent > most || extent % step != 0)
        throw JsonError(place + ": " + std::to_string(extent) + " is above " + std::to_string(most) +
                        " or no multiple of " + std::to_string(step));
    return extent;
}

std::string fileBesideThisLibrary(const char* name)
{
    const std::string own = os::modulePath(reinterpret_cast<const void*>(&boardNameOf));
    return os::textOf(os::pathOf(own).parent_path() / name) + os::kLibraryEnding;
}

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
        const BoardFormat* format = nullptr;
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
    std::map<std::filesystem::path, std::shared_ptr<const PlayedFolder>> m_folders;   // each is read once
    std::set<uint32_t> m_dmaIds;
    int32_t m_nextCameraPort = 0;
};

AppletReader::AppletReader(std::string path, int32_t boardType)
    : m_path(std::move(path)), m_boardType(boardType)
{}

Applet AppletReader::read(JsonObject& object)
{
    Applet applet;
    Draft common;
    readDma(object, common);
    if (const auto lacks = object.find("lacks"))
        lacks->eachEntry([&](const JsonValue& id) { applet.lacking.insert(lackingId(id)); });
    if (const auto parameters = object.find("parameters"))
        applet.parameters = readParameters(*parameters);
    readOwnFile(object, applet);
    if (const auto processes = object.find("processes"))
        processes->eachEntry([&](const JsonValue& entry) { readProcess(entry, common, applet); });
    else
        addDefaultProcess(common, applet);
    return applet;
}

void AppletReader::readDma(JsonObject& object, Draft& draft)
{
    readExtent(object, "width", draft.width);
    readExtent(object, "height", draft.height);
    DmaDescription& dma = draft.dma;
    readExtent(object, "maxWidth", dma.maxWidth, 0);
    readExtent(object, "maxHeight", dma.maxHeight, 0);
    readExtent(object, "maxXOffset", dma.maxXOffset, 0);
    readExtent(object, "maxYOffset", dma.maxYOffset, 0);
    readExtent(object, "widthStep", dma.widthStep, 1);
    readExtent(object, "heightStep", dma.heightStep, 1);
    readExtent(object, "offsetStep", dma.offsetStep, 1);
    if (const auto format = object.find("format"))
        draft.format =
            findBoardFormat(format->integer(boardFormats().front().number, boardFormats().back().number));
    if (const auto rate = object.find("picturesPerSecond"))
        dma.picturesPerSecond = rate->number(0, kHighestRate);
    if (const auto source = object.find("source"))
        readPictures(*source, dma.pictures);
}

void AppletReader::readPictures(const JsonValue& source, PictureChoice& pictures)
{
    pictures = {};
    if (source.isText()) {
        if (source.text() == "numbers")
            pictures.kind = PictureChoice::Kind::NumbersOnly;
        else if (source.text() != "pattern")
            source.refuse(R"(must be "pattern", "numbers" or an object with a "folder")");
        return;
    }
    JsonObject object = source.object();
    const JsonValue folder = object.need("folder");
    const std::filesystem::path path = pathBeside(m_path, folder);
    if (const auto fit = object.find("fit")) {
        pictures.cropped = fit->text() == "crop";
        if (!pictures.cropped && fit->text() != "scale")
            fit->refuse(R"(must be "scale" or "crop")");
    }
    object.refuseOthers();
    pictures.kind = PictureChoice::Kind::Folder;
    try {
        auto& loaded = m_folders[path];
        if (!loaded)
            loaded = std::make_shared<PlayedFolder>(path);
        pictures.folder = loaded;
    } catch (const std::runtime_error& error) {
        throw JsonError(folder.place() + ": " + error.what());
    }
}

void AppletReader::readProcess(const JsonValue& entry, const Draft& common, Applet& applet)
{
    JsonObject object = entry.object();
    ProcessDescription process;
    const JsonValue dmas = object.need("dmas");
    if (dmas.isInteger()) {
        for (int64_t left = dmas.integer(0, kMostDmaPorts); left > 0; --left)
            addDma(dmas.place(), nullptr, common, process);
    } else {
        dmas.eachEntry([&](const JsonValue& port) {
            JsonObject members = port.object();
            addDma(port.place(), &members, common, process);
        });
    }
    if (const auto ports = object.find("cameraPorts"))
        ports->eachEntry([&](const JsonValue& port) { readCameraPort(port, process); });
    else
        addPortForEachDma(process);
    object.refuseOthers();
    applet.processes.push_back(std::move(process));
}

void AppletReader::addDma(const std::string& place, JsonObject* members, const Draft& common,
                          ProcessDescription& process)
{
    Draft draft = common;
    draft.dma.id = m_dmaIds.empty() ? 0 : *m_dmaIds.rbegin() + 1;
    if (members) {
        if (const auto id = members->find("id"))
            draft.dma.id = static_cast<uint32_t>(id->integer(0, kHighestId));
        readDma(*members, draft);
        members->refuseOthers();
    }
    if (!m_dmaIds.insert(draft.dma.id).second)
        throw JsonError(place + ": another DMA port of the applet has the id " +
                        std::to_string(draft.dma.id));
    process.dmas.push_back(finished(std::move(draft), place));
}

/// A mere number feeds the DMA at its own position, if there is one.
void AppletReader::readCameraPort(const JsonValue& entry, ProcessDescription& process)
{
    const auto numberOf = [](const JsonValue& value) {
        return static_cast<int32_t>(value.integer(0, kHighestId));
    };
    const size_t position = process.cameraPorts.size();
    CameraPortDescription port;
    if (position < process.dmas.size())
        port.dma = position;
    if (entry.isObject()) {
        JsonObject object = entry.object();
        port.number = numberOf(object.need("port"));
        if (const auto dma = object.find("dma")) {
            if (process.dmas.empty())
                dma->refuse("must not be there: the process has no DMA ports");
            port.dma = static_cast<size_t>(dma->integer(0, static_cast<int64_t>(process.dmas.size()) - 1));
        }
        object.refuseOthers();
    } else {
        port.number = numberOf(entry);
    }
    const auto& others = process.cameraPorts;
    if (port.dma && std::any_of(others.begin(), others.end(),
                                [&](const CameraPortDescription& other) { return other.dma == port.dma; }))
        throw JsonError(entry.place() + ": another camera port feeds the DMA port at position " +
                        std::to_string(*port.dma));
    if (std::any_of(others.begin(), others.end(),
                    [&](const CameraPortDescription& other) { return other.number == port.number; }))
        throw JsonError(entry.place() + ": the process has the camera port " + std::to_string(port.number) +
                        " already");
    process.cameraPorts.push_back(port);
}

void AppletReader::addPortForEachDma(ProcessDescription& process)
{
    for (size_t position = 0; position < process.dmas.size(); ++position)
        process.cameraPorts.push_back({m_nextCameraPort++, position});
}

void AppletReader::addDefaultProcess(const Draft& common, Applet& applet)
{
    ProcessDescription process;
    for (uint32_t left = cameraFamilyOf(m_boardType).ports; left > 0; --left)
        addDma("the default", nullptr, common, process);
    addPortForEachDma(process);
    applet.processes.push_back(std::move(process));
}

DmaDescription AppletReader::finished(Draft draft, const std::string& place) const
{
    DmaDescription& dma = draft.dma;
    const Photo* const first = dma.pictures.folder ? &dma.pictures.folder->photos().front() : nullptr;
    dma.geometry.width = settled(place + ".width", draft.width, first ? first->width() : kDefaultWidth,
                                 dma.maxWidth, dma.widthStep);
    dma.geometry.height = settled(place + ".height", draft.height, first ? first->height() : kDefaultHeight,
                                  dma.maxHeight, dma.heightStep);
    const bool grey = first ? first->isGrey() : cameraFamilyOf(m_boardType).isGrey;
    dma.geometry.format = draft.format ? draft.format : findBoardFormat(grey ? kGrey8 : kColour24);
    return dma;
}

void AppletReader::readOwnFile(JsonObject& object, Applet& applet) const
{
    applet.file = m_path;
    if (const auto info = object.find("info")) {
        applet.file = fileBesideThisLibrary(info->isNull() ? "orvo_sim_applet_bare" : "orvo_sim_applet");
        applet.info = info->isNull() ? 0 : static_cast<int32_t>(info->integer(-kMostInfo, kMostInfo));
    }
    if (const auto file = object.find("file"))
        applet.file = os::textOf(pathBeside(m_path, *file));
}

}   // namespace

Applet Applet::read(const std::string& path, int32_t boardType)
{
    Applet applet;
    readJsonFile(path, [&](JsonObject& object) { applet = AppletReader(path, boardType).read(object); });
    return applet;
}

}   // namespace orvo::sim
