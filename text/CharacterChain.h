#pragma once

#include "foundation/KList.h"
#include "text/TextCharacter.h"

// Flattens each GlyphRecord of the list (in text order) into a chain of
// TextCharacter records and answers its head; null for an empty list. On a
// failure frees what it built and throws.
TextCharacter* BuildCharacterChain(const KList& glyphRecords);
