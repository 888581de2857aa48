#pragma once

#include "programs/workflow/PictureData.h"
#include "programs/workflow/PictureScene.h"

/// The R-X plane of an impedance relay: its stages, its line and those behind it, and the measured impedances of the
/// faults that were computed. A setting gives the reach along the line only; as a drawing convention each stage is the
/// circle through the origin whose diameter is the reach at the angle of the line. Measured impedances are known by
/// magnitude and are drawn as arcs.
PictureScene impedancePicture(const PictureData& data, const PictureChoice& choice);
