#pragma once

#include <QCoreApplication>
#include <QImage>

#include "programs/workflow/PictureScene.h"

/// Takes pictures out of the program, dark on white with title, date and the whole legend.
class PictureExport {
    Q_DECLARE_TR_FUNCTIONS(PictureExport)
  public:
    /// The file is whole or not there. \param file  svg or png by its ending \return false with one sentence in `error`
    static bool write(const PictureScene& scene, const QString& file, QString* error);
    /// At twice the usual size.
    static QImage image(const PictureScene& scene);
};
