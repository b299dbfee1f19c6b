#pragma once

#include "Templates/CardTemplate.h"

#include <random>

namespace quorvel {

/// A design with anything in it that the records can hold: odd texts, extreme numbers, every case.
CardTemplate randomTemplate(std::mt19937_64& random);

}  // namespace quorvel
