#pragma once

#include <QWidget>
#include <optional>

#include "programs/workflow/PictureData.h"
#include "programs/workflow/PictureScene.h"

class PictureCanvas;
class QComboBox;
class QHBoxLayout;
class QTabWidget;
class QToolButton;

/// Pictures of the relay part in hand: the R-X plane of distance stages, and the staircase of times along the relays
/// that it coordinates with.
class SettingPictures : public QWidget {
    Q_OBJECT
  public:
    SettingPictures(int caseNo, int rTypeNo, QWidget* parent = nullptr);

    /// Draws from the working tables as they stand now; while the pictures are hidden, when they are shown.
    void showPart(int rNo, int pNo);

  public slots:
    void exportPicture();  ///< asks for a file, svg or png
    void copyPicture();

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    QToolButton* addButton(const char* name, const QString& text, const QString& tip, QHBoxLayout& row);
    void layOut();
    void refresh();
    void draw();
    void fillNeighbours();
    [[nodiscard]] int firstChoice() const;
    [[nodiscard]] PictureCanvas* current() const;

    int case_;
    bool impedances_;  ///< whether the relay type has an R-X plane
    QTabWidget* tabs_;
    PictureCanvas* plane_;
    PictureCanvas* steps_;
    QComboBox* neighbour_;
    QComboBox* measure_;

    std::optional<PictureNetwork> network_;
    PictureData data_;
    int relay_ = 0;
    int part_ = 0;
    bool stale_ = true;
};
