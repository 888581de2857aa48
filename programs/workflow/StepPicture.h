#pragma once

#include "programs/workflow/PictureData.h"
#include "programs/workflow/PictureScene.h"

/// Times of the relay and of those behind its line: over the impedance that it measures, or over the current in it.
/// The steps of the others stand where the relay sees them; stretches without their time step are marked.
PictureScene stepPicture(const PictureData& data, const PictureChoice& choice);
