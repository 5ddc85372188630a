#include "handset/model/Families.h"

namespace kalmo::handset {

namespace {

constexpr auto cr = LineEnd::Cr;
constexpr auto crLf = LineEnd::CrLf;

// clang-format off
constexpr Family families[] = {
    {0,  "Generic",  "1.00",   {19200, 115200}, cr,   0,   0,  nullptr, false},
    {1,  "SIEMENS",  "25.01",  {19200, 0},      cr,   100, 10, nullptr, false},
    {2,  "SIEMENS",  "29.04",  {19200, 0},      cr,   200, 10, "MEL",   true},
    {3,  "SIEMENS",  "30.03",  {19200, 0},      cr,   200, 10, "0",     true},
    {4,  "SIEMENS",  "31.07",  {19200, 0},      cr,   250, 20, "3",     true},
    {5,  "SIEMENS",  "40.12",  {115200, 0},     cr,   250, 0,  nullptr, false},
    {6,  "SIEMENS",  "41.02",  {115200, 0},     cr,   250, 0,  nullptr, false},
    {7,  "SIEMENS",  "40.09",  {115200, 0},     cr,   150, 0,  nullptr, false},
    {8,  "Gigaset",  "52.06",  {115200, 0},     cr,   500, 0,  nullptr, false},
    {9,  "Gigaset",  "53.01",  {115200, 0},     cr,   500, 0,  nullptr, false},
    {10, "Gigaset",  "56.03",  {115200, 0},     cr,   500, 0,  nullptr, false},
    {11, "Gigaset",  "83.110", {115200, 0},     crLf, 500, 0,  nullptr, false},
    {12, "Gigaset",  "91.080", {115200, 0},     crLf, 500, 0,  nullptr, false},
    {13, "Gigaset",  "94.125", {115200, 0},     crLf, 500, 0,  nullptr, false},
};
// clang-format on

} // namespace

const Family& familyOf(int number)
{
    return families[number >= 1 && number <= lastFamily ? number : 0];
}

} // namespace kalmo::handset
