#pragma once

#include <vector>

#include "transmitters/transmitter.h"

namespace veloran::fuzz {

/// Alike but for their identities, which are made anew with every value read.
bool areSame(const std::vector<Transmitter>& a, const std::vector<Transmitter>& b);

/// The list is short enough to be kept, reads back from what is written of it, each channel has its
/// texts, and the choices made of the list hold each of its channels once.
void requireSoundChannels(const std::vector<Transmitter>& channels);

}  // namespace veloran::fuzz
