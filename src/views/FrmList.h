#pragma once

#include <QDate>
#include <QDialog>
#include <QString>

#include <functional>
#include <memory>

class LinkLabelGroup;
class ListGridModel;
class QMenu;
class QAction;
struct AppServices;

namespace Ui {
class FrmList;
}

// What the caller hands to the list window: the range to show first, and what to do for
// it after the list changed entries.
struct ListHandOver
{
    QDate ListFromDate; // an invalid date leaves the box empty (no lower bound)
    QDate ListToDate;   // likewise for the upper bound
    // After every saved edit, new entry or delete: the caller redraws what shows entries.
    std::function<void()> EntriesChanged;
    // An editor asked for a sticky note with this text and colour.
    std::function<void(const QString& text, int colorIndex)> NewStickyNote;
};

// "スケジュール一覧": the schedules and tasks of a date range in a grid. From it the user
// opens the editors for new entries and for the listed ones, and deletes entries; after
// every change the grid is read anew and the caller is told.
class FrmList final : public QDialog
{
    Q_OBJECT
public:
    FrmList(AppServices& app, ListHandOver& handOver, QWidget* parent = nullptr);
    ~FrmList() override;

    ListGridModel* model() const { return m_model; }
    QMenu* actionMenu() const { return MnuAction; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Form_Load();
    void CmbSelect_Click();
    void RangeBox_LostFocus();
    void LabStartDate_Click();
    void LabEndDate_Click();
    void GrdGrid_RightRelease(const QPoint& pos);
    void MnuSchedule_Click();
    void MnuTask_Click();
    void MnuUpdate_Click();
    void MnuDelete_Click();

    // Reads the grid anew for the chosen item and range. A range box that holds no date is
    // reported and the grid keeps its rows. Afterwards the row of keepId is current, or
    // the row at keepRow when that entry is no longer listed.
    bool FillGrid(qint64 keepId = 0, int keepRow = 0);
    void AfterEdit(bool saved, bool postRequested, const QString& postText, int postColorIndex, qint64 id);
    int currentRow() const;
    void buildMenu();

    AppServices& m_app;
    ListHandOver& m_handOver;
    std::unique_ptr<Ui::FrmList> m_ui;
    ListGridModel* m_model = nullptr;
    LinkLabelGroup* m_links = nullptr;
    QMenu* MnuAction = nullptr;
    QAction* MnuSchedule = nullptr;
    QAction* MnuTask = nullptr;
    QAction* MnuUpdate = nullptr;
    QAction* MnuDelete = nullptr;
    // The box texts of the last fill: leaving a box unchanged reads nothing again.
    QString m_filledFrom;
    QString m_filledTo;
};
