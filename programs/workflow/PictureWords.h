#pragma once

#include "programs/workflow/PictureData.h"
#include "programs/workflow/PictureScene.h"

/// The words and figures of a picture: values in the wanted measure with their unit.
class PictureWords {
  public:
    PictureWords(const PictureData& data, bool secondary);

    [[nodiscard]] double shown(double primary) const { return primary * factor_; }
    [[nodiscard]] QString value(double primary) const;                  ///< "42.83 ohm"
    [[nodiscard]] QString stage(const PictureStage& stage) const;       ///< "Ⅱ段 42.83 ohm 0.30 s"
    [[nodiscard]] QString neighbour(const PictureNeighbour& at) const;  ///< name, length and coefficient
    [[nodiscard]] QString fault(const PictureFault& fault) const;
    [[nodiscard]] QString axis(const QString& quantity) const;  ///< with unit and measure

    /// Titles, findings and notes, which all pictures have, and the legend in order. \param part  in hand, 0 none
    void head(PictureScene& scene, const QString& kind, int part) const;

  private:
    const PictureData& data_;
    bool secondary_;
    double factor_;
    QString unit_;
};
