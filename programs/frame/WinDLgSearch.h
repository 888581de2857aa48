#pragma once

#include <QDialog>

class PaintTable;
class QLineEdit;
class QPushButton;

/// Lists records and finds one by its text.
class WinDLgSearch : public QDialog {
    Q_OBJECT
  public:
    /// \param kind  what is listed: 1 operating modes, 2 relay locations, 3 and 4 calculations, 5 and 7 main branches,
    ///              6 cases, 8 relays
    WinDLgSearch(const QStringList& items, int kind, QWidget* parent = nullptr, const char* name = nullptr,
                 bool modal = true, Qt::WindowFlags flags = {});

    /// Row of the record chosen; -1 when none was.
    static int iSearchResult;

    PaintTable* table_Key;
    QLineEdit* lineEdit_Search;
    QPushButton* pushButton_Select;
    QPushButton* pushButton_Ensure;
    QPushButton* pushButton_Cancel;

  public slots:
    void PushButton_Ensure_Clicked();
    void PushButton_Cancel_Clicked();
    /// The first record that contains the text, by case.
    void PushButton_Select_Clicked();
    void Table_Key_Selected(int row);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void layOut(int width);
    void fill(const QStringList& items, int kind);
    void findFrom(int first);
    void findNext();
};
