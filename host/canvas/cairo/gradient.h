// Gradients as cairo calculates them.
#pragma once

#include "canvas/cairo/types.h"

// Whether cairo can take its numbers.
bool isFinite(const AGradient& gradient);

// Of a finite gradient with two stops or more and some way between them; `opacity` from 0 to 1. Nothing where
// its transform leaves nothing of it.
ACairoPattern gradientPattern(const AGradient& gradient, double opacity);
