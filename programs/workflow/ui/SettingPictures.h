#pragma once

#include <QWidget>

/// Pictures of the relay part in hand: the R-X plane of distance stages, and the staircase of times along the relays
/// that it coordinates with.
class SettingPictures : public QWidget {
    Q_OBJECT
  public:
    SettingPictures(int caseNo, int rTypeNo, QWidget* parent = nullptr);

    /// Draws from the working tables as they stand now.
    void showPart(int rNo, int pNo);
};
