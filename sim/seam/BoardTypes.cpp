#include "sim/seam/BoardTypes.h"

#include <string_view>

namespace orvo::sim {

namespace {

struct TypeRow {
    int32_t first, last;     // type codes
    std::string_view name;   // followed by the place in the row, from 1
    const CameraFamily& family;
};

constexpr TypeRow kTypes[] = {
    {2897, 2899, "Orvo Gigabit", kGigEVision},     {3650, 3650, "Orvo Gigabit Plus", kGigEVision},
    {3652, 3652, "Orvo Gigabit Pro", kGigEVision}, {1872, 1881, "Orvo Link", kGenICam},
    {2624, 2629, "Orvo Express", kGenICam},        {2641, 2650, "Orvo Fibre", kGenICam},
    {29968, 29969, "Orvo Link Pro", kGenICam},     {30016, 30017, "Orvo Express Pro", kGenICam},
    {30097, 30097, "Orvo Fibre Pro", kGenICam},
};

const TypeRow* rowOf(int32_t type)
{
    for (const TypeRow& row : kTypes)
        if (row.first <= type && type <= row.last)
            return &row;
    return nullptr;
}

}   // namespace

const CameraFamily& cameraFamilyOf(int32_t type)
{
    const TypeRow* const row = rowOf(type);
    return row ? row->family : kGenICam;
}

std::string boardNameOf(int32_t type)
{
    const TypeRow* const row = rowOf(type);
    if (!row)
        return "Board type " + std::to_string(type);
    return std::string(row->name) + " " + std::to_string(type - row->first + 1);
}

}   // namespace orvo::sim
