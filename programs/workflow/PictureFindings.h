#pragma once

struct PictureData;

/// Fills the findings and the notes of a picture whose relay, neighbours and faults stand.
void addFindings(PictureData& data);
