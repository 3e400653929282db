#pragma once

#include "desk/application/desk_host.h"
#include "desk/application/goods_module.h"

#include <QMainWindow>

#include <functional>
#include <memory>

class QLabel;
class QTabWidget;

namespace desk {

class HomePage;
class TDocument_List_FRM;
class TChoose_FRM;
class TOpeningReport_FRM;

/// The desk: menu, toolbar, pages (screens that dock become pages) and the status line.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// `desk` outlives the window. `databaseName` is what the status line shows.
    MainWindow(DeskHost &desk, GoodsModule &module, const QString &databaseName);
    ~MainWindow() override;

    /// The copy of a database that the user wants opened in place of this one; empty when the desk just ends.
    const QString &WantedBackup() const { return m_backup; }
    /// A command by its object name, for the tour and for tests; null when there is none.
    QAction *Command(const QString &objectName) const;

protected:
    /// Closes every screen first; one that stays keeps the window.
    void closeEvent(QCloseEvent *event) override;
    /// F1 outside of a screen opens the guide; on a screen it is that screen's.
    void keyPressEvent(QKeyEvent *event) override;

private:
    void AddCommands();
    void AddMenus();
    void AddToolBar();
    void AddStatusLine();
    QAction *AddCommand(const QString &objectName, const QString &caption, int glyph, const QKeySequence &key,
                        std::function<void()> run);
    void ShowStatus();
    void ShowFigures(const QString &today);
    void EnterPage();

    void OpenGoodsList();
    void NewGood();
    void OpenChoose();
    void OpenDetailTypes();
    void OpenDivisions();
    void OpenDocuments();
    void OpenDetailHistory();
    void NewDocument(host::TOperationType type);
    TDocument_List_FRM &Documents();
    void OpenOpeningStock();
    void OpenEntities(host::TSoftwarePart part);
    void OpenRights();
    void OpenSettings();
    void ChangeUser();
    void BackUpDatabase();
    void RestoreDatabase();
    /// False when a screen stays, because of a change that is not saved; that one is brought to the front.
    bool CloseScreens();
    bool MayOpenList(host::TSoftwarePart part);
    bool MayManage(const QString &what);

    DeskHost &m_desk;
    GoodsModule &m_module;
    QString m_databaseName;
    QString m_backup;
    QTabWidget *m_pages;
    HomePage *m_home = nullptr;
    QLabel *m_user = nullptr;
    QLabel *m_date = nullptr;
    std::unique_ptr<TChoose_FRM> m_choose;
    std::unique_ptr<TDocument_List_FRM> m_documents;
    std::unique_ptr<TOpeningReport_FRM> m_openingStock;
};

} // namespace desk
