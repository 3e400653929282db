#include "desk/window/main_window.h"

#include "desk/application/backup.h"
#include "desk/application/first_start.h"
#include "desk/choose/choose.h"
#include "desk/documents/detail_history.h"
#include "desk/documents/document_list.h"
#include "desk/messages/catalogue.h"
#include "desk/messages/message_box.h"
#include "desk/opening/opening_report.h"
#include "desk/services/users.h"
#include "desk/settings/rights.h"
#include "desk/settings/settings_screen.h"
#include "desk/window/home_page.h"
#include "host/data/database_error.h"
#include "host/data/persian_text.h"
#include "host/data/query.h"
#include "host/look/icons.h"
#include "host/look/theme.h"
#include "host/screens/documents_folder.h"

#include <QCloseEvent>
#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

using host::TSoftwarePart;

constexpr int Manager = 1;
constexpr QSize ToolIcon(22, 22);
constexpr int LowScreen = 800;   // logical pixels
constexpr int NoticeTime = 4000; // milliseconds

} // namespace

MainWindow::MainWindow(DeskHost &desk, GoodsModule &module, const QString &databaseName)
    : m_desk(desk), m_module(module), m_databaseName(databaseName), m_pages(new QTabWidget(this))
{
    setObjectName(u"MainWindow"_s);
    setWindowTitle(u"میز کار"_s);
    setWindowIcon(host::Icon(host::Glyph::Goods, host::theme::Accent));
    // The goods list without scrolling sideways, where the screen is wide enough.
    resize(QSize(1320, 780).boundedTo(screen()->availableSize() - host::theme::WindowFrame));
    m_pages->setObjectName(u"Pages"_s);
    m_pages->setDocumentMode(true);
    setCentralWidget(m_pages);
    if (m_module.IsLoaded()) {
        m_desk.entities.SetDetailTypeChooser(
            [this](const host::MultibleParam &wanted) { return m_module.Select_DetailTypes_Multible(wanted); });
        m_desk.selectedLists.SetGoodsChooser([this] { return m_module.Select_Good_Multible(u"#LC#"_s); });
    }
    AddCommands();
    AddMenus();
    AddToolBar();
    AddStatusLine();
    // Row by row: goods, documents, base data, the desk itself.
    QList<QAction *> tiles;
    for (const QString &name : {u"GoodsList"_s, u"NewGood"_s, u"DetailTypes"_s, u"Choose"_s, u"Documents"_s,
                                u"NewSale"_s, u"NewPurchase"_s, u"Divisions"_s, u"Groups"_s, u"Stores"_s, u"Units"_s,
                                u"OpeningStock"_s, u"DetailHistory"_s, u"Rights"_s, u"Settings"_s, u"User"_s})
        tiles << Command(name + u"_ACT"_s);
    m_home = new HomePage(tiles);
    m_pages->addTab(m_home, u"آغاز"_s);
    m_pages->tabBar()->setFocusPolicy(Qt::NoFocus); // the keys belong to the page
    connect(m_pages, &QTabWidget::currentChanged, this, [this] { EnterPage(); });
    m_desk.SetMainWindow(this);
    ShowStatus();
}

MainWindow::~MainWindow()
{
    m_choose.reset();
    m_documents.reset();
    m_openingStock.reset();
    m_desk.entities.SetDetailTypeChooser({});
    m_desk.SetMainWindow(nullptr);
}

QAction *MainWindow::Command(const QString &objectName) const
{
    return findChild<QAction *>(objectName, Qt::FindDirectChildrenOnly);
}

// Every command is a boundary: what it throws is shown here.
QAction *MainWindow::AddCommand(const QString &objectName, const QString &caption, int glyph, const QKeySequence &key,
                                std::function<void()> run)
{
    auto *action = new QAction(host::Icon(static_cast<host::Glyph>(glyph)), caption, this);
    action->setObjectName(objectName);
    action->setShortcut(key);
    connect(action, &QAction::triggered, this, [this, run = std::move(run)] {
        try {
            run();
        } catch (const host::DatabaseError &error) {
            m_desk.messages.ShowMessage(MessageText(message::DatabaseFailed, {error.Text()}), host::MessageIcon::Error,
                                        {});
        } catch (const std::exception &error) {
            m_desk.messages.ShowMessage(QString::fromUtf8(error.what()), host::MessageIcon::Error, {});
        }
        ShowStatus();
    });
    return action;
}

void MainWindow::AddCommands()
{
    const auto add = [this](const char16_t *name, const char16_t *caption, host::Glyph glyph, const QKeySequence &key,
                            auto run) {
        QAction *action = AddCommand(QString::fromUtf16(name), QString::fromUtf16(caption), static_cast<int>(glyph),
                                     key, std::move(run));
        return action;
    };
    QAction *goods[] = {
        add(u"GoodsList_ACT", u"لیست کالاها", host::Glyph::Goods, Qt::CTRL | Qt::Key_L, [this] { OpenGoodsList(); }),
        add(u"NewGood_ACT", u"کالای جدید", host::Glyph::AddGood, Qt::CTRL | Qt::Key_N, [this] { NewGood(); }),
        add(u"Choose_ACT", u"انتخاب برای بخش دیگر", host::Glyph::Choose, Qt::CTRL | Qt::Key_E,
            [this] { OpenChoose(); }),
        add(u"DetailTypes_ACT", u"جزئیات کالاها", host::Glyph::Details, Qt::CTRL | Qt::Key_D,
            [this] { OpenDetailTypes(); }),
        add(u"Divisions_ACT", u"تقسیم جزئیات", host::Glyph::Divide, Qt::CTRL | Qt::Key_T, [this] { OpenDivisions(); }),
    };
    for (QAction *action : goods)
        action->setEnabled(m_module.IsLoaded());
    add(u"Documents_ACT", u"اسناد", host::Glyph::Documents, Qt::CTRL | Qt::Key_R, [this] { OpenDocuments(); });
    add(u"NewSale_ACT", u"فروش جدید", host::Glyph::Documents, Qt::CTRL | Qt::Key_S,
        [this] { NewDocument(host::TOperationType::Sale); });
    add(u"NewPurchase_ACT", u"خرید جدید", host::Glyph::Documents, Qt::CTRL | Qt::Key_P,
        [this] { NewDocument(host::TOperationType::Purchase); });
    add(u"DetailHistory_ACT", u"تاریخچه‌ی سریال", host::Glyph::Details, Qt::CTRL | Qt::Key_H,
        [this] { OpenDetailHistory(); });
    add(u"Groups_ACT", u"گروه‌های کالا", host::Glyph::Groups, Qt::CTRL | Qt::Key_G,
        [this] { OpenEntities(TSoftwarePart::GoodsGroups); });
    add(u"Stores_ACT", u"انبارها", host::Glyph::Stores, Qt::CTRL | Qt::Key_B,
        [this] { OpenEntities(TSoftwarePart::Stores); });
    add(u"Units_ACT", u"واحدهای سنجش", host::Glyph::Units, Qt::CTRL | Qt::Key_U,
        [this] { OpenEntities(TSoftwarePart::Units); });
    add(u"OpeningStock_ACT", u"لیست موجودی اول دوره", host::Glyph::Stores, Qt::CTRL | Qt::Key_M,
        [this] { OpenOpeningStock(); });
    add(u"Rights_ACT", u"دسترسی کاربران", host::Glyph::Rights, {}, [this] { OpenRights(); });
    add(u"Settings_ACT", u"تنظیمات", host::Glyph::Settings, {}, [this] { OpenSettings(); });
    QAction *copies[] = {
        add(u"Backup_ACT", u"پشتیبان‌گیری…", host::Glyph::Documents, {}, [this] { BackUpDatabase(); }),
        add(u"Restore_ACT", u"بازگرداندن نسخه‌ی پشتیبان…", host::Glyph::Documents, {},
            [this] { RestoreDatabase(); }),
    };
    // A server has backups of its own.
    for (QAction *action : copies)
        action->setEnabled(m_desk.host.DM.ADOConnection1.driverName() != u"QODBC");
    add(u"Guide_ACT", u"فهرست راهنما\tF1", host::Glyph::Information, {}, [this] { m_desk.help.Show({}); });
    add(u"User_ACT", u"تغییر کاربر", host::Glyph::User, {}, [this] { ChangeUser(); });
    add(u"Exit_ACT", u"خروج", host::Glyph::Exit, Qt::CTRL | Qt::Key_Q, [this] { close(); });
}

void MainWindow::AddMenus()
{
    const auto menu = [this](const QString &title, const QStringList &commands) {
        QMenu *added = menuBar()->addMenu(title);
        for (const QString &name : commands) {
            if (name.isEmpty())
                added->addSeparator();
            else
                added->addAction(Command(name));
        }
    };
    menu(u"&کالا"_s, {u"GoodsList_ACT"_s, u"NewGood_ACT"_s, u"DetailTypes_ACT"_s, {}, u"Choose_ACT"_s});
    menu(u"ا&سناد"_s,
         {u"Documents_ACT"_s, u"NewSale_ACT"_s, u"NewPurchase_ACT"_s, {}, u"Divisions_ACT"_s, u"DetailHistory_ACT"_s});
    menu(u"&گزارش‌ها"_s, {u"OpeningStock_ACT"_s});
    menu(u"&اطلاعات پایه"_s, {u"Groups_ACT"_s, u"Stores_ACT"_s, u"Units_ACT"_s});
    menu(u"سی&ستم"_s, {u"Rights_ACT"_s,
                       u"Settings_ACT"_s,
                       {},
                       u"Backup_ACT"_s,
                       u"Restore_ACT"_s,
                       {},
                       u"User_ACT"_s,
                       {},
                       u"Exit_ACT"_s});
    menu(u"&راهنما"_s, {u"Guide_ACT"_s});
}

void MainWindow::AddToolBar()
{
    QToolBar *bar = addToolBar(u"دستورها"_s);
    bar->setObjectName(u"Tool_BAR"_s);
    bar->setMovable(false);
    // On a low screen the lines belong to the pages.
    const bool low = screen()->availableSize().height() < LowScreen;
    bar->setIconSize(low ? ToolIcon * 0.75 : ToolIcon);
    bar->setToolButtonStyle(low ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonTextUnderIcon);
    for (const QString &name : {u"GoodsList_ACT"_s, u"NewGood_ACT"_s, u"DetailTypes_ACT"_s, u"Choose_ACT"_s, QString(),
                                u"Documents_ACT"_s, u"Divisions_ACT"_s, QString(), u"Groups_ACT"_s, u"Stores_ACT"_s,
                                u"Units_ACT"_s, QString(), u"Settings_ACT"_s, u"Exit_ACT"_s}) {
        if (name.isEmpty())
            bar->addSeparator();
        else
            bar->addAction(Command(name));
    }
}

void MainWindow::AddStatusLine()
{
    statusBar()->setSizeGripEnabled(false);
    statusBar()->setContentsMargins(12, 0, 12, 0);
    m_user = new QLabel(statusBar());
    m_user->setObjectName(u"User_LBL"_s);
    m_user->setTextFormat(Qt::PlainText);
    auto *database = new QLabel(u"پایگاه داده: \u2066%1\u2069"_s.arg(m_databaseName), statusBar());
    database->setObjectName(u"Database_LBL"_s);
    database->setTextFormat(Qt::PlainText);
    m_date = new QLabel(statusBar());
    m_date->setObjectName(u"Today_LBL"_s);
    statusBar()->addWidget(m_user);
    statusBar()->addWidget(database);
    statusBar()->addPermanentWidget(m_date);
}

// Whoever comes back to a page goes on where they were.
void MainWindow::EnterPage()
{
    ShowStatus();
    QWidget *page = m_pages->currentWidget();
    if (QWidget *last = page->focusWidget())
        last->setFocus(Qt::OtherFocusReason);
}

void MainWindow::ShowStatus()
{
    const QString today = host::PersianDigits(m_desk.clock.NowShamsiDate());
    m_user->setText(u"کاربر: %1"_s.arg(m_desk.settings.UserInfo().Name));
    m_date->setText(today);
    if (m_pages->currentWidget() != m_home)
        return;
    try {
        ShowFigures(today);
    } catch (const host::DatabaseError &error) {
        // Nobody gave an order that failed: a line says it, a box would stop whoever only turns a page.
        statusBar()->showMessage(MessageText(message::DatabaseSilent, {error.Text().simplified()}), NoticeTime);
    }
}

void MainWindow::ShowFigures(const QString &today)
{
    const QSqlDatabase &database = m_desk.host.DM.ADOConnection1;
    const auto count = [&database](const QString &table, const QString &where = {}) {
        const QVariant number = host::Scalar(database, u"SELECT COUNT(*) FROM "_s + table + where);
        return host::PersianDigits(host::GroupDigits(number.toString()));
    };
    m_home->SetCompany(host::Scalar(database, u"SELECT Name FROM inf_co"_s).toString(), u"امروز "_s + today);
    m_home->SetFigures({{count(u"GoodInf"_s), u"کالا"_s},
                        {count(u"GoodGrpS"_s, u" WHERE Code <> 0"_s), u"گروه کالا"_s},
                        {count(u"Stores"_s), u"انبار"_s},
                        {count(u"GoodStock"_s, u" WHERE Amount1 > 0"_s), u"کالای موجود"_s}});
}

void MainWindow::OpenGoodsList()
{
    m_module.Open_GoodList();
}

void MainWindow::NewGood()
{
    m_module.Edit_Good(0);
}

void MainWindow::OpenChoose()
{
    if (!m_choose)
        m_choose = std::make_unique<TChoose_FRM>(m_desk.host, m_module);
    if (m_choose->IsShowing())
        m_pages->setCurrentWidget(m_choose.get());
    else
        m_choose->ShowDocked();
}

void MainWindow::OpenOpeningStock()
{
    if (!MayOpenList(TSoftwarePart::OpeningStock))
        return;
    if (!m_openingStock)
        m_openingStock = std::make_unique<TOpeningReport_FRM>(m_desk.host);
    if (m_openingStock->IsShowing())
        m_pages->setCurrentWidget(m_openingStock.get());
    else
        m_openingStock->ShowDocked();
}

void MainWindow::OpenEntities(TSoftwarePart part)
{
    if (MayOpenList(part))
        m_desk.entities.Call_GroupList(part);
}

void MainWindow::OpenDetailTypes()
{
    // The function of the module asks for no right: who may call it is the host's affair.
    if (MayOpenList(TSoftwarePart::DetailTypes))
        m_module.Call_DetailTypes_List();
}

void MainWindow::OpenDivisions()
{
    // As above.
    if (MayOpenList(TSoftwarePart::GoodDetailDivision))
        m_module.Open_GoodDetailDivision();
}

TDocument_List_FRM &MainWindow::Documents()
{
    if (!m_documents)
        m_documents = std::make_unique<TDocument_List_FRM>(m_desk.host, m_module, host::TFormMode::DockedList);
    return *m_documents;
}

void MainWindow::OpenDocuments()
{
    if (Documents().IsShowing())
        m_pages->setCurrentWidget(&Documents());
    else
        Documents().ShowDocked();
}

void MainWindow::NewDocument(host::TOperationType type)
{
    Documents().NewDocument(DocumentKindOf(static_cast<int>(type)));
}

void MainWindow::OpenDetailHistory()
{
    TDetailHistory_FRM(m_desk.host).ShowModally(); // asks for the right itself
}

bool MainWindow::MayOpenList(TSoftwarePart part)
{
    return host::Granted(m_desk.host, part, host::TPermission::OpenList);
}

bool MainWindow::MayManage(const QString &what)
{
    if (m_desk.settings.UserInfo().ManageType == Manager)
        return true;
    m_desk.messages.ShowMessage(MessageText(message::NoRightTo, {what}), host::MessageIcon::Warning, {});
    return false;
}

void MainWindow::OpenRights()
{
    if (!MayManage(u"تغییر دسترسی‌ها"_s))
        return;
    TRights_FRM(m_desk.host, m_desk.permissions).ShowModally();
    m_desk.settings.SignIn(m_desk.settings.UserInfo().Code); // the user may have a new name
}

void MainWindow::OpenSettings()
{
    if (MayManage(u"تغییر تنظیمات"_s))
        TSettings_FRM(m_desk.host, m_desk.settings).ShowModally();
}

void MainWindow::ChangeUser()
{
    QStringList names;
    QList<int> codes;
    for (const host::Entity &user : Users(m_desk.host.DM.ADOConnection1).All()) {
        names << UserCaption(user);
        codes << user.Code;
    }
    QInputDialog dialog(this);
    dialog.setObjectName(u"User_DLG"_s);
    dialog.setWindowTitle(u"تغییر کاربر"_s);
    dialog.setLabelText(u"کاربر :"_s);
    dialog.setComboBoxItems(names);
    dialog.setTextValue(names.value(codes.indexOf(m_desk.settings.UserInfo().Code)));
    dialog.setOkButtonText(u"تأیید"_s);
    dialog.setCancelButtonText(u"انصراف"_s);
    dialog.resize(360, dialog.sizeHint().height());
    if (dialog.exec() != QDialog::Accepted)
        return;
    const int chosen = codes.value(names.indexOf(dialog.textValue()), m_desk.settings.UserInfo().Code);
    // What is open shows what the former user may see, and keeps its layout for that user.
    if (chosen == m_desk.settings.UserInfo().Code || !CloseScreens())
        return;
    if (m_desk.settings.SignIn(chosen))
        statusBar()->showMessage(u"کاربر تغییر کرد."_s, NoticeTime);
}

void MainWindow::BackUpDatabase()
{
    if (!MayManage(u"پشتیبان‌گیری"_s))
        return;
    QFileDialog dialog(this, u"پشتیبان‌گیری"_s, host::DocumentsFolder(), u"پایگاه داده \u2066(*.db)"_s);
    dialog.setObjectName(u"Backup_DLG"_s);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(u"db"_s);
    dialog.selectFile(u"goods-"_s + m_desk.clock.NowShamsiDate().replace(u'/', u'-') + u".db"_s);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const QString file = dialog.selectedFiles().constFirst();
    BackUp(m_desk.host.DM.ADOConnection1, file);
    statusBar()->showMessage(
        u"نسخه‌ی پشتیبان نوشته شد: \u2066%1\u2069"_s.arg(QDir::toNativeSeparators(file)),
        NoticeTime);
}

void MainWindow::RestoreDatabase()
{
    if (!MayManage(u"بازگرداندن نسخه‌ی پشتیبان"_s))
        return;
    const QString file = ChooseBackup(this);
    if (file.isEmpty() || !AskBox(this, MessageText(message::RestoreDatabase, {QFileInfo(file).fileName()}), false) ||
        !CloseScreens())
        return;
    m_backup = file;
    close();
}

bool MainWindow::CloseScreens()
{
    const auto screens = m_pages->findChildren<host::TBaseDock_FRM *>();
    for (host::TBaseDock_FRM *screen : screens) {
        if (!screen->IsShowing())
            continue;
        screen->reject();
        if (screen->IsShowing()) {
            m_pages->setCurrentWidget(screen);
            return false;
        }
    }
    return true;
}

void MainWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_F1)
        Command(u"Guide_ACT"_s)->trigger();
    else
        QMainWindow::keyPressEvent(event);
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (CloseScreens())
        QMainWindow::closeEvent(event);
    else
        event->ignore();
}

} // namespace desk
