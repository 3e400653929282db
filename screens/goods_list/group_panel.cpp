#include "screens/goods_list/group_panel.h"

#include "host/data/dataset.h"
#include "ui_group_panel.h"

#include <QKeyEvent>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace goods_list {

GroupPanel::GroupPanel(QWidget *parent) : QWidget(parent), m_ui(std::make_unique<Ui::GroupPanel>())
{
    m_ui->setupUi(this);
    m_ui->GoodGroupDB_GRD->SetColumns({{u"Code"_s, u"کد"_s, 60, true, host::ColumnFormat::Code, false},
                                       {u"Name"_s, u"گروه"_s, 180, false, host::ColumnFormat::Text, false}});
    m_ui->GoodGroupDB_GRD->SetSearchFields({u"Name"_s});
    m_ui->GoodGroupDB_GRD->horizontalHeader()->hide();
    m_ui->GoodGroupDB_GRD->horizontalHeader()->setStretchLastSection(true);
    m_ui->SearchGroup_EDT->installEventFilter(this);
    m_ui->GoodGroupDB_GRD->installEventFilter(this);
    BuildMenu();
    ShowHint(false);
    connect(m_ui->SearchGroup_EDT, &QLineEdit::textChanged, this, &GroupPanel::Search);
    connect(m_ui->GoodGroupDB_GRD, &host::Grid::RowActivated, this, &GroupPanel::Choose);
    connect(m_ui->GoodGroupDB_GRD, &QWidget::customContextMenuRequested, this, &GroupPanel::ShowMenu);
}

GroupPanel::~GroupPanel() = default;

void GroupPanel::BuildMenu()
{
    GroupList_PUM = new QMenu(this);
    GroupList_PUM->setObjectName(u"GroupList_PUM"_s);
    const auto add = [this](const QString &name, const QString &caption) {
        QAction *action = GroupList_PUM->addAction(caption);
        action->setObjectName(name);
        return action;
    };
    connect(add(u"GNew_PMI"_s, u"جدید"_s), &QAction::triggered, this, &GroupPanel::NewRequested);
    connect(add(u"GEdit_PMI"_s, u"ویرایش"_s), &QAction::triggered, this,
            [this] { emit EditRequested(CurrentGroup()); });
    connect(add(u"GDelete_PMI"_s, u"حذف"_s), &QAction::triggered, this,
            [this] { emit DeleteRequested(CurrentGroup()); });
}

void GroupPanel::ShowMenu(const QPoint &position)
{
    // Group 0 stands for all goods: it is no group that could be changed.
    const bool real = CurrentGroup() != 0;
    for (QAction *action : GroupList_PUM->actions())
        action->setEnabled(real || action->objectName() == u"GNew_PMI"_s);
    GroupList_PUM->popup(m_ui->GoodGroupDB_GRD->viewport()->mapToGlobal(position));
}

void GroupPanel::SetGroups(host::Dataset *groups)
{
    m_ui->GoodGroupDB_GRD->SetSource(groups);
    if (groups) // without them, the chosen one waits for those that come next
        SetChosenGroup(m_chosen);
}

void GroupPanel::SetChosenGroup(int code)
{
    m_ui->SearchGroup_EDT->clear();
    m_chosen = m_ui->GoodGroupDB_GRD->Locate(QString::number(code)) ? code : 0;
    ReturnToChosen();
}

int GroupPanel::CurrentGroup() const
{
    return m_ui->GoodGroupDB_GRD->CurrentKey().toInt();
}

QString GroupPanel::CurrentName() const
{
    return m_ui->GoodGroupDB_GRD->CurrentValue(u"Name"_s).toString();
}

void GroupPanel::FocusSearch()
{
    m_ui->SearchGroup_EDT->setFocus(Qt::ShortcutFocusReason);
    m_ui->SearchGroup_EDT->selectAll();
}

QPushButton *GroupPanel::GroupButton() const
{
    return m_ui->Group_BTN;
}

QList<QWidget *> GroupPanel::TabStops() const
{
    return {m_ui->SearchGroup_EDT, m_ui->GoodGroupDB_GRD, m_ui->Group_BTN};
}

void GroupPanel::Choose()
{
    if (m_ui->GoodGroupDB_GRD->IsEmpty())
        return;
    const int code = CurrentGroup();
    m_chosen = code;
    m_ui->SearchGroup_EDT->clear();
    ReturnToChosen();
    emit GroupChosen(code);
}

void GroupPanel::ReturnToChosen()
{
    if (m_ui->GoodGroupDB_GRD->CurrentKey() != QString::number(m_chosen))
        m_ui->GoodGroupDB_GRD->Locate(QString::number(m_chosen));
}

void GroupPanel::Search(const QString &text)
{
    m_ui->GoodGroupDB_GRD->Search({u"Name"_s, false, text, {}});
    if (text.isEmpty())
        ReturnToChosen();
    else if (!m_ui->GoodGroupDB_GRD->IsEmpty())
        m_ui->GoodGroupDB_GRD->StandOn(0);
}

bool GroupPanel::SearchKey(int key)
{
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Choose();
        return true;
    case Qt::Key_Down:
        m_ui->GoodGroupDB_GRD->setFocus(Qt::TabFocusReason);
        return true;
    case Qt::Key_Escape:
        if (m_ui->SearchGroup_EDT->text().isEmpty())
            emit LeaveRequested();
        else
            m_ui->SearchGroup_EDT->clear();
        return true;
    default:
        return false;
    }
}

void GroupPanel::ShowHint(bool focused)
{
    m_ui->SearchGroup_EDT->setPlaceholderText(focused ? QString() : u"جستجو ... (Ctrl + F11)"_s);
}

bool GroupPanel::eventFilter(QObject *watched, QEvent *event)
{
    const bool search = watched == m_ui->SearchGroup_EDT;
    switch (event->type()) {
    case QEvent::FocusIn:
        if (search)
            ShowHint(true);
        break;
    case QEvent::FocusOut: {
        if (search)
            ShowHint(false);
        const auto reason = static_cast<QFocusEvent *>(event)->reason();
        if (!search && reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
            ReturnToChosen();
        break;
    }
    case QEvent::KeyPress: {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (search)
            return SearchKey(key->key());
        if (key->key() == Qt::Key_Escape) {
            emit LeaveRequested();
            return true;
        }
        break;
    }
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace goods_list
