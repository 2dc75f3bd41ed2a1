#include "sim/brdlib5/Applet.h"

#include "sim/brdlib5/AppletReader.h"
#include "sim/json/JsonFile.h"

namespace orvo::sim {

Applet Applet::read(const std::string& path, int32_t boardType)
{
    Applet applet;
    readJsonFile(path, [&](JsonObject& object) { applet = AppletReader(path, boardType).read(object); });
    return applet;
}

}   // namespace orvo::sim
