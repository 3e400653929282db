#include "screens/good_editor/category_page.h"

#include "screens/good_editor/page_command.h"
#include "ui_category_page.h"

#include <QAction>
#include <QHeaderView>
#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace {

constexpr int TakenOff = 2;
constexpr int Attached = 1;

} // namespace

CategoryPage::CategoryPage(host::Host &host, goods::Categories &data, const host::RuleRunner &run, QWidget *parent)
    : QWidget(parent), m_host(host), m_data(data), m_ui(std::make_unique<Ui::CategoryPage>())
{
    m_ui->setupUi(this);
    m_ui->Category_GRD->SetColumns({{u"NAME"_s, u"دسته"_s, 520}});
    m_ui->Category_GRD->SetSource(&m_data.KalaCategory_Qry, u"Id"_s);
    m_ui->Category_GRD->horizontalHeader()->setStretchLastSection(true);
    using Action = host::Refused (CategoryPage::*)();
    for (const auto &[button, key, action] : {std::tuple(m_ui->AddCat_BTN, Qt::Key_F4, Action(&CategoryPage::Add)),
                                              std::tuple(m_ui->DellCat_BTN, Qt::Key_F7, Action(&CategoryPage::Delete))})
        // The caption of the button is the command and its key.
        AddPageCommand(this, m_ui->Category_GRD,
                       {button, key, button->text().section(u' ', 0, 0),
                        [this, run, action = action] { run([this, action] { return (this->*action)(); }); }});
    m_edit = m_ui->Category_frame1->focusProxy();
    m_edit->installEventFilter(this);
}

CategoryPage::~CategoryPage() = default;

void CategoryPage::Open(int goodCode, bool mayChange)
{
    const QList<host::Category> tree = m_host.categories.Tree();
    m_ui->Category_frame1->SetTree(tree);
    m_ui->Category_frame1->SetCode(0);
    const bool commands = mayChange && !tree.isEmpty();
    m_ui->CategoryCommands_PNL->setVisible(commands);
    for (QAction *command : actions())
        command->setVisible(commands);
    MoveTo(goodCode);
}

void CategoryPage::MoveTo(int goodCode)
{
    m_good = goodCode;
    Refresh();
}

void CategoryPage::Refresh()
{
    m_data.Fill_grid(m_good);
    const bool any = !m_data.KalaCategory_Qry.IsEmpty();
    m_ui->DellCat_BTN->setEnabled(any);
    actions().constLast()->setEnabled(any);
    m_ui->CategoryHint_LBL->setVisible(!any);
}

/// The way down leads into the grid; where there is nothing yet, the chooser has it.
bool CategoryPage::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_edit || event->type() != QEvent::KeyPress || m_ui->Category_GRD->IsEmpty())
        return QWidget::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    if (key->key() != Qt::Key_Down || (key->modifiers() & ~Qt::KeypadModifier))
        return QWidget::eventFilter(watched, event);
    m_ui->Category_GRD->setFocus(Qt::OtherFocusReason);
    return true;
}

host::Refused CategoryPage::Add()
{
    const bool taken = m_ui->Category_frame1->TakePending();
    const int category = m_ui->Category_frame1->Code();
    if (!taken || category == 0 || !m_data.cat_checker(m_good, category))
        return Unfit();
    m_data.InsertUpdateToKalaCategory(m_good, category, Attached);
    Refresh();
    m_ui->Category_frame1->SetCode(0);
    emit Changed();
    return {};
}

host::Refusal CategoryPage::Unfit() const
{
    return host::Repeated(m_ui->Category_frame1, u"دسته"_s, u"زیر شاخه خالی یا "_s);
}

host::Refused CategoryPage::CheckCategories()
{
    if (m_ui->Category_frame1->IsPending() || m_ui->Category_frame1->Code() != 0)
        if (host::Refused refused = Add())
            return refused;
    if (!m_data.DropUnfit(m_good))
        return {};
    Refresh();
    return Unfit();
}

host::Refused CategoryPage::Delete()
{
    if (m_data.KalaCategory_Qry.IsEmpty() || !m_host.messages.MsgDeleteItem(u"دسته"_s))
        return {};
    m_data.GoodCatToTemp(m_ui->Category_GRD->CurrentKey().toInt(), TakenOff);
    Refresh();
    emit Changed();
    return {};
}
