// The filter's record kept between runs of the command-line host, the way an
// image editor keeps it for the length of a session.
//
// The record belongs to one filter: the file names its owner (the filter's
// name, category and version), and a record is handed back only to that
// filter, never to another one that would read it as its own layout.
//
// File format: the 8 bytes "PLMHOST2"; the owner's length as a 32-bit
// little-endian number and its bytes; the record's length as a 64-bit
// little-endian number and its bytes; a 32-bit little-endian FNV-1a checksum
// of the owner's and the record's bytes. A file that does not match in every
// part is treated as damaged and ignored.
#ifndef PLUMET_HOSTS_HOSTSTATE_H
#define PLUMET_HOSTS_HOSTSTATE_H

#include "hosts/PiPLReader.h"
#include "sdk/PIFilter.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace plumet::hosts {

// Records larger than this are not kept.
constexpr std::size_t kMaxKeptRecord = std::size_t(16) << 20;

// $XDG_STATE_HOME/plumet/host-state, else $HOME/.local/state/plumet/host-state;
// empty when neither variable is set.
std::string DefaultStatePath();

// Owners longer than this are cut.
constexpr std::size_t kMaxOwner = 1024;

enum class StateLoad { Loaded, Missing, OtherOwner, Damaged, Unusable };

// The owner of a filter's kept record: its name, category and version.
std::string KeptRecordOwner(const PiPLInfo& info);

// The kept record in the file format above, for a host that keeps it
// somewhere other than a file. A null block is kept as an empty record.
std::vector<uint8_t> EncodeKeptRecord(const std::string& owner, Handle block);

// Reads bytes made by EncodeKeptRecord into a new block for `owner`, as
// LoadKeptRecord does; `why` says what is wrong with Damaged bytes.
StateLoad DecodeKeptRecord(const uint8_t* data, std::size_t size, const std::string& owner,
                           Handle& block, std::string& why);

// Reads the kept record of `owner` into a new block from PIGlobalAlloc (the
// caller frees it with PIGlobalFree). Missing: no file. OtherOwner: the
// record is another filter's. Damaged: the file is not a kept record, and
// `warning` says why. Unusable: the path is a directory, so nothing can be
// kept there either; `warning` says so. The block is null unless Loaded.
StateLoad LoadKeptRecord(const std::string& path, const std::string& owner, Handle& block,
                         std::string& warning);

// Writes the owner and the bytes of the block (PIGlobalSize of them) through
// a temporary file and a rename, making the directory if needed. A null
// block removes the file.
bool SaveKeptRecord(const std::string& path, const std::string& owner, Handle block,
                    std::string& error);

} // namespace plumet::hosts

#endif
