#include "resources/Accelerators.h"

#include <iterator>

namespace plumet {

namespace {
constexpr Accelerator kTable[] = {
    {2000, 'v', kAccelNone},           {2000, 'V', kAccelNone},
    {2001, 'l', kAccelNone},           {2001, 'L', kAccelNone},
    {2002, 'w', kAccelNone},           {2002, 'W', kAccelNone},
    {2003, 'r', kAccelNone},           {2003, 'R', kAccelNone},
    {2004, 's', kAccelNone},           {2004, 'S', kAccelNone},
    {2005, 'd', kAccelNone},           {2005, 'D', kAccelNone},
    {2006, 'm', kAccelNone},           {2006, 'M', kAccelNone},
    {2007, 't', kAccelNone},           {2007, 'T', kAccelNone},
    {2008, 'c', kAccelNone},           {2008, 'C', kAccelNone},
    {2009, 'o', kAccelNone},           {2009, 'O', kAccelNone},
    {2010, kKeyBackspace, kAccelNone}, {2010, kKeyBackspace, kAccelCtrl},
    {2010, kKeyDelete, kAccelNone},    {2010, kKeyDelete, kAccelCtrl},
    {2011, kKeyUp, kAccelNone},        {2012, kKeyDown, kAccelNone},
    {2013, kKeyUp, kAccelShift},       {2014, kKeyDown, kAccelShift},
    {2015, kKeyUp, kAccelCtrl},        {2016, kKeyDown, kAccelCtrl},
    {2017, kKeyLeft, kAccelNone},      {2018, kKeyRight, kAccelNone},
    {2019, kKeyLeft, kAccelShift},     {2020, kKeyRight, kAccelShift},
    {2021, kKeyLeft, kAccelCtrl},      {2022, kKeyRight, kAccelCtrl},
};
} // namespace

const Accelerator* AcceleratorTable(std::size_t* count) {
    if (count) *count = std::size(kTable);
    return kTable;
}

int FindAccelerator(int key, unsigned modifiers) {
    for (const Accelerator& a : kTable)
        if (a.key == key && a.modifiers == modifiers) return a.id;
    return 0;
}

} // namespace plumet
