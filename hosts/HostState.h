// The filter's record kept between runs of the command-line host, the way an
// image editor keeps it for the length of a session.
//
// File format: the 8 bytes "PLMHOST1", the record's length as a 64-bit
// little-endian number, the record's bytes, and a 32-bit little-endian
// FNV-1a checksum of those bytes. A file that does not match in every part
// is treated as damaged and ignored.
#ifndef PLUMET_HOSTS_HOSTSTATE_H
#define PLUMET_HOSTS_HOSTSTATE_H

#include "sdk/PIFilter.h"

#include <cstddef>
#include <string>

namespace plumet::hosts {

// Records larger than this are not kept.
constexpr std::size_t kMaxKeptRecord = std::size_t(16) << 20;

// $XDG_STATE_HOME/plumet/host-state, else $HOME/.local/state/plumet/host-state;
// empty when neither variable is set.
std::string DefaultStatePath();

enum class StateLoad { Loaded, Missing, Damaged };

// Reads the kept record into a new block from PIGlobalAlloc (the caller frees
// it with PIGlobalFree). Missing: no file, block null. Damaged: the file is
// not a kept record; block null and `warning` says why.
StateLoad LoadKeptRecord(const std::string& path, Handle& block, std::string& warning);

// Writes the bytes of the block (PIGlobalSize of them) through a temporary
// file and a rename, making the directory if needed. A null block removes
// the file.
bool SaveKeptRecord(const std::string& path, Handle block, std::string& error);

} // namespace plumet::hosts

#endif
