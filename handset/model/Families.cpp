#include "handset/model/Families.h"

namespace kalmo::handset {

namespace {

constexpr auto cr = LineEnd::Cr;
constexpr auto crLf = LineEnd::CrLf;

constexpr DataMode early(qint64 fileMemory)
{
    return {.maxPacket = 512, .fileMemory = fileMemory, .tellsDeletes = true};
}

constexpr DataMode middle(int maxPacket, qint64 fileMemory)
{
    return {.maxPacket = maxPacket, .fileMemory = fileMemory};
}

constexpr DataMode late(int maxPacket, qint64 fileMemory)
{
    return {.maxPacket = maxPacket,
            .fileMemory = fileMemory,
            .answersEscape = true,
            .quotedCards = true,
            .absoluteNames = true};
}

// clang-format off
constexpr Family families[] = {
    {0,  "Generic",  "1.00",   {19200, 115200}, cr,   0,   0,  nullptr, false},
    {1,  "SIEMENS",  "25.01",  {19200, 0},      cr,   100, 10, nullptr, false},
    {2,  "SIEMENS",  "29.04",  {19200, 0},      cr,   200, 10, "MEL",   true},
    {3,  "SIEMENS",  "30.03",  {19200, 0},      cr,   200, 10, "0",     true},
    {4,  "SIEMENS",  "31.07",  {19200, 0},      cr,   250, 20, "3",     true},
    {5,  "SIEMENS",  "40.12",  {115200, 0},     cr,   250, 0,  nullptr, false, early(1500000)},
    {6,  "SIEMENS",  "41.02",  {115200, 0},     cr,   250, 0,  nullptr, false, early(2000000)},
    {7,  "SIEMENS",  "40.09",  {115200, 0},     cr,   150, 0,  nullptr, false, early(0)},
    {8,  "Gigaset",  "52.06",  {115200, 0},     cr,   500, 0,  nullptr, false, middle(1024, 4000000)},
    {9,  "Gigaset",  "53.01",  {115200, 0},     cr,   500, 0,  nullptr, false, middle(1024, 4000000)},
    {10, "Gigaset",  "56.03",  {115200, 0},     cr,   500, 0,  nullptr, false, middle(2048, 8000000)},
    {11, "Gigaset",  "83.110", {115200, 0},     crLf, 500, 0,  nullptr, false, late(2044, 8000000)},
    {12, "Gigaset",  "91.080", {115200, 0},     crLf, 500, 0,  nullptr, false, late(4096, 16000000)},
    {13, "Gigaset",  "94.125", {115200, 0},     crLf, 500, 0,  nullptr, false, late(4096, 16000000)},
};
// clang-format on

} // namespace

const Family& familyOf(int number)
{
    return families[number >= 1 && number <= lastFamily ? number : 0];
}

} // namespace kalmo::handset
