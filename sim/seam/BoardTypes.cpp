#include "sim/seam/BoardTypes.h"

#include <string_view>

namespace orvo::sim {

namespace {

struct TypeRow {
    int32_t first, last;     // type codes
    std::string_view name;   // followed by the place in the row, from 1
    CameraFamily family;
};

constexpr TypeRow kTypes[] = {
    {2897, 2899, "Orvo Gigabit", CameraFamily::GigEVision},
    {3650, 3650, "Orvo Gigabit Plus", CameraFamily::GigEVision},
    {3652, 3652, "Orvo Gigabit Pro", CameraFamily::GigEVision},
    {1872, 1881, "Orvo Link", CameraFamily::GenICam},
    {2624, 2629, "Orvo Express", CameraFamily::GenICam},
    {2641, 2650, "Orvo Fibre", CameraFamily::GenICam},
    {29968, 29969, "Orvo Link Pro", CameraFamily::GenICam},
    {30016, 30017, "Orvo Express Pro", CameraFamily::GenICam},
    {30097, 30097, "Orvo Fibre Pro", CameraFamily::GenICam},
};

const TypeRow* rowOf(int32_t type)
{
    for (const TypeRow& row : kTypes)
        if (row.first <= type && type <= row.last)
            return &row;
    return nullptr;
}

}   // namespace

CameraFamily cameraFamilyOf(int32_t type)
{
    const TypeRow* const row = rowOf(type);
    return row ? row->family : CameraFamily::GenICam;
}

std::string boardNameOf(int32_t type)
{
    const TypeRow* const row = rowOf(type);
    if (!row)
        return "Board type " + std::to_string(type);
    return std::string(row->name) + " " + std::to_string(type - row->first + 1);
}

}   // namespace orvo::sim
