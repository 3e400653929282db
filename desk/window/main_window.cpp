#include "desk/window/main_window.h"

#include "desk/choose/choose.h"
#include "desk/messages/catalogue.h"
#include "desk/services/users.h"
#include "desk/settings/rights.h"
#include "desk/settings/settings_screen.h"
#include "desk/window/home_page.h"
#include "desk/window/icons.h"
#include "host/data/database_error.h"
#include "host/data/persian_text.h"
#include "host/data/query.h"
#include "host/screens/theme.h"

#include <QtGui/QCloseEvent>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolBar>

namespace desk {

namespace {

using host::TSoftwarePart;

constexpr int Manager = 1;
constexpr QSize ToolIcon(22, 22);
constexpr int NoticeTime = 4000; // milliseconds

} // namespace

MainWindow::MainWindow(DeskHost &desk, GoodsModule &module, const QString &databaseName)
    : desk_(desk), module_(module), databaseName_(databaseName), pages_(new QTabWidget(this))
{
    setObjectName(u"MainWindow"_qs);
    setWindowTitle(u"میز کار"_qs);
    setWindowIcon(Icon(Glyph::Goods, host::theme::Accent()));
    // The goods list without scrolling sideways, where the screen is wide enough.
    resize(QSize(1320, 780).boundedTo(screen()->availableSize() - host::theme::WindowFrame));
    pages_->setObjectName(u"Pages"_qs);
    pages_->setDocumentMode(true);
    setCentralWidget(pages_);
    if (module_.IsLoaded())
        desk_.entities.SetDetailTypeChooser(
            [this](const host::MultibleParam &wanted) { return module_.Select_DetailTypes_Multible(wanted); });
    AddCommands();
    AddMenus();
    AddToolBar();
    AddStatusLine();
    home_ = new HomePage({Command(u"GoodsList_ACT"_qs), Command(u"NewGood_ACT"_qs), Command(u"DetailTypes_ACT"_qs),
                          Command(u"Groups_ACT"_qs), Command(u"Stores_ACT"_qs), Command(u"Units_ACT"_qs),
                          Command(u"Choose_ACT"_qs), Command(u"Rights_ACT"_qs), Command(u"Settings_ACT"_qs)});
    pages_->addTab(home_, u"آغاز"_qs);
    pages_->tabBar()->setFocusPolicy(Qt::NoFocus); // the keys belong to the page
    connect(pages_, &QTabWidget::currentChanged, this, [this] { EnterPage(); });
    desk_.SetMainWindow(this);
    ShowStatus();
}

MainWindow::~MainWindow()
{
    choose_.reset();
    desk_.entities.SetDetailTypeChooser({});
    desk_.SetMainWindow(nullptr);
}

QAction *MainWindow::Command(const QString &objectName) const
{
    return findChild<QAction *>(objectName, Qt::FindDirectChildrenOnly);
}

// Every command is a boundary: what it throws is shown here.
QAction *MainWindow::AddCommand(const QString &objectName, const QString &caption, int glyph, const QKeySequence &key,
                                std::function<void()> run)
{
    auto *action = new QAction(Icon(static_cast<Glyph>(glyph)), caption, this);
    action->setObjectName(objectName);
    action->setShortcut(key);
    connect(action, &QAction::triggered, this, [this, run = std::move(run)] {
        try {
            run();
        } catch (const host::DatabaseError &error) {
            desk_.messages.ShowMessage(MessageText(message::DatabaseFailed, {error.Text()}), host::MessageIcon::Error,
                                       {});
        } catch (const std::exception &error) {
            desk_.messages.ShowMessage(QString::fromUtf8(error.what()), host::MessageIcon::Error, {});
        }
        ShowStatus();
    });
    return action;
}

void MainWindow::AddCommands()
{
    const auto add = [this](const char16_t *name, const char16_t *caption, Glyph glyph, const QKeySequence &key,
                            auto run) {
        QAction *action = AddCommand(QString::fromUtf16(name), QString::fromUtf16(caption), static_cast<int>(glyph),
                                     key, std::move(run));
        return action;
    };
    QAction *goods[] = {
        add(u"GoodsList_ACT", u"لیست کالاها", Glyph::Goods, Qt::CTRL | Qt::Key_L, [this] { OpenGoodsList(); }),
        add(u"NewGood_ACT", u"کالای جدید", Glyph::AddGood, Qt::CTRL | Qt::Key_N, [this] { NewGood(); }),
        add(u"Choose_ACT", u"انتخاب برای بخش دیگر", Glyph::Choose, Qt::CTRL | Qt::Key_E, [this] { OpenChoose(); }),
        add(u"DetailTypes_ACT", u"جزئیات کالاها", Glyph::Details, Qt::CTRL | Qt::Key_D, [this] { OpenDetailTypes(); }),
    };
    for (QAction *action : goods)
        action->setEnabled(module_.IsLoaded());
    add(u"Groups_ACT", u"گروه‌های کالا", Glyph::Groups, Qt::CTRL | Qt::Key_G,
        [this] { OpenEntities(TSoftwarePart::GoodsGroups); });
    add(u"Stores_ACT", u"انبارها", Glyph::Stores, Qt::CTRL | Qt::Key_B,
        [this] { OpenEntities(TSoftwarePart::Stores); });
    add(u"Units_ACT", u"واحدهای سنجش", Glyph::Units, Qt::CTRL | Qt::Key_U,
        [this] { OpenEntities(TSoftwarePart::Units); });
    add(u"Rights_ACT", u"دسترسی کاربران", Glyph::Rights, {}, [this] { OpenRights(); });
    add(u"Settings_ACT", u"تنظیمات", Glyph::Settings, {}, [this] { OpenSettings(); });
    add(u"User_ACT", u"تغییر کاربر", Glyph::User, {}, [this] { ChangeUser(); });
    add(u"Exit_ACT", u"خروج", Glyph::Exit, Qt::CTRL | Qt::Key_Q, [this] { close(); });
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
    menu(u"&کالا"_qs, {u"GoodsList_ACT"_qs, u"NewGood_ACT"_qs, u"DetailTypes_ACT"_qs, {}, u"Choose_ACT"_qs});
    menu(u"&اطلاعات پایه"_qs, {u"Groups_ACT"_qs, u"Stores_ACT"_qs, u"Units_ACT"_qs});
    menu(u"&سیستم"_qs, {u"Rights_ACT"_qs, u"Settings_ACT"_qs, {}, u"User_ACT"_qs, {}, u"Exit_ACT"_qs});
}

void MainWindow::AddToolBar()
{
    QToolBar *bar = addToolBar(u"دستورها"_qs);
    bar->setObjectName(u"Tool_BAR"_qs);
    bar->setMovable(false);
    bar->setIconSize(ToolIcon);
    bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    for (const QString &name :
         {u"GoodsList_ACT"_qs, u"NewGood_ACT"_qs, u"DetailTypes_ACT"_qs, u"Choose_ACT"_qs, QString(), u"Groups_ACT"_qs,
          u"Stores_ACT"_qs, u"Units_ACT"_qs, QString(), u"Settings_ACT"_qs, u"Exit_ACT"_qs}) {
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
    user_ = new QLabel(statusBar());
    user_->setObjectName(u"User_LBL"_qs);
    user_->setTextFormat(Qt::PlainText);
    auto *database = new QLabel(u"پایگاه داده: \u2066%1\u2069"_qs.arg(databaseName_), statusBar());
    database->setObjectName(u"Database_LBL"_qs);
    database->setTextFormat(Qt::PlainText);
    date_ = new QLabel(statusBar());
    date_->setObjectName(u"Today_LBL"_qs);
    statusBar()->addWidget(user_);
    statusBar()->addWidget(database);
    statusBar()->addPermanentWidget(date_);
}

// Whoever comes back to a page goes on where they were.
void MainWindow::EnterPage()
{
    ShowStatus();
    QWidget *page = pages_->currentWidget();
    if (QWidget *last = page->focusWidget())
        last->setFocus(Qt::OtherFocusReason);
}

void MainWindow::ShowStatus()
{
    const QString today = host::PersianDigits(desk_.clock.NowShamsiDate());
    user_->setText(u"کاربر: %1"_qs.arg(desk_.settings.UserInfo().Name));
    date_->setText(today);
    if (pages_->currentWidget() != home_)
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
    const QSqlDatabase &database = desk_.host.DM.ADOConnection1;
    const auto count = [&database](const QString &table, const QString &where = {}) {
        const QVariant number = host::Scalar(database, u"SELECT COUNT(*) FROM "_qs + table + where);
        return host::PersianDigits(host::GroupDigits(number.toString()));
    };
    home_->SetCompany(host::Scalar(database, u"SELECT Name FROM inf_co"_qs).toString(), u"امروز "_qs + today);
    home_->SetFigures({{count(u"GoodInf"_qs), u"کالا"_qs},
                       {count(u"GoodGrpS"_qs, u" WHERE Code <> 0"_qs), u"گروه کالا"_qs},
                       {count(u"Stores"_qs), u"انبار"_qs},
                       {count(u"GoodStock"_qs, u" WHERE Amount1 > 0"_qs), u"کالای موجود"_qs}});
}

void MainWindow::OpenGoodsList()
{
    module_.Open_GoodList();
}

void MainWindow::NewGood()
{
    module_.Edit_Good(0);
}

void MainWindow::OpenChoose()
{
    if (!choose_)
        choose_ = std::make_unique<TChoose_FRM>(desk_.host, module_);
    if (choose_->IsShowing())
        pages_->setCurrentWidget(choose_.get());
    else
        choose_->ShowDocked();
}

void MainWindow::OpenEntities(TSoftwarePart part)
{
    if (MayOpenList(part))
        desk_.entities.Call_GroupList(part);
}

void MainWindow::OpenDetailTypes()
{
    // The function of the module asks for no right: who may call it is the host's affair.
    if (MayOpenList(TSoftwarePart::DetailTypes))
        module_.Call_DetailTypes_List();
}

bool MainWindow::MayOpenList(TSoftwarePart part)
{
    return host::Granted(desk_.host, part, host::TPermission::OpenList);
}

bool MainWindow::MayManage()
{
    if (desk_.settings.UserInfo().ManageType == Manager)
        return true;
    desk_.messages.ShowMessage(
        MessageText(message::NoRightTo, {u"تغییر دسترسی‌ها و تنظیمات"_qs}),
        host::MessageIcon::Warning, {});
    return false;
}

void MainWindow::OpenRights()
{
    if (!MayManage())
        return;
    TRights_FRM(desk_.host, desk_.permissions).ShowModally();
    desk_.settings.SignIn(desk_.settings.UserInfo().Code); // the user may have a new name
}

void MainWindow::OpenSettings()
{
    if (MayManage())
        TSettings_FRM(desk_.host, desk_.settings).ShowModally();
}

void MainWindow::ChangeUser()
{
    QStringList names;
    QList<int> codes;
    for (const host::Entity &user : Users(desk_.host.DM.ADOConnection1).All()) {
        names << UserCaption(user);
        codes << user.Code;
    }
    QInputDialog dialog(this);
    dialog.setObjectName(u"User_DLG"_qs);
    dialog.setWindowTitle(u"تغییر کاربر"_qs);
    dialog.setLabelText(u"کاربر :"_qs);
    dialog.setComboBoxItems(names);
    dialog.setTextValue(names.value(codes.indexOf(desk_.settings.UserInfo().Code)));
    dialog.setOkButtonText(u"تأیید"_qs);
    dialog.setCancelButtonText(u"انصراف"_qs);
    dialog.resize(360, dialog.sizeHint().height());
    if (dialog.exec() != QDialog::Accepted)
        return;
    const int chosen = codes.value(names.indexOf(dialog.textValue()), desk_.settings.UserInfo().Code);
    // What is open shows what the former user may see, and keeps its layout for that user.
    if (chosen == desk_.settings.UserInfo().Code || !CloseScreens())
        return;
    if (desk_.settings.SignIn(chosen))
        statusBar()->showMessage(u"کاربر تغییر کرد."_qs, NoticeTime);
}

bool MainWindow::CloseScreens()
{
    const auto screens = pages_->findChildren<host::TBaseDock_FRM *>();
    for (host::TBaseDock_FRM *screen : screens) {
        if (!screen->IsShowing())
            continue;
        screen->reject();
        if (screen->IsShowing()) {
            pages_->setCurrentWidget(screen);
            return false;
        }
    }
    return true;
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (CloseScreens())
        QMainWindow::closeEvent(event);
    else
        event->ignore();
}

} // namespace desk
