#include "screens/good_editor/category_page.h"

#include "ui_category_page.h"

#include <QtGui/QAction>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QHeaderView>

namespace {

constexpr int TakenOff = 2;
constexpr int Attached = 1;

/// The nodes of the tree by their parent.
using Branches = QHash<int, QList<host::Category>>;

/// The ends of the branches below `parent`, with the way to them as text: goods stand in those only.
void AddLeaves(const Branches &branches, int parent, const QString &way, QComboBox *choices)
{
    for (const host::Category &branch : branches.value(parent)) {
        const QString name = way.isEmpty() ? branch.Name : way + QStringLiteral(" / ") + branch.Name;
        if (branches.contains(branch.Code))
            AddLeaves(branches, branch.Code, name, choices);
        else
            choices->addItem(name, branch.Code);
    }
}

} // namespace

CategoryPage::CategoryPage(host::Host &host, TGood_DM &data, const goods::RuleRunner &run, QWidget *parent)
    : QWidget(parent), host_(host), data_(data), ui_(std::make_unique<Ui::CategoryPage>())
{
    ui_->setupUi(this);
    ui_->Category_GRD->SetColumns({{QStringLiteral("NAME"), QStringLiteral("دسته"), 520}});
    ui_->Category_GRD->SetSource(&data_.KalaCategory_Qry, QStringLiteral("Id"));
    ui_->Category_GRD->horizontalHeader()->setStretchLastSection(true);
    using Action = goods::Refused (CategoryPage::*)();
    for (const auto &[button, key, action] :
         {std::tuple(ui_->AddCat_BTN, Qt::Key_F4, Action(&CategoryPage::Add)),
          std::tuple(ui_->DellCat_BTN, Qt::Key_F7, Action(&CategoryPage::Delete))}) {
        connect(button, &QPushButton::clicked, this,
                [this, run, action = action] { run([this, action] { return (this->*action)(); }); });
        // The caption of the button is the command and its key; the menu of the grid shows the key by itself.
        auto *command = new QAction(button->text().section(u' ', 0, 0), this);
        command->setShortcut(key);
        command->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        connect(command, &QAction::triggered, button, &QPushButton::click);
        addAction(command);
        ui_->Category_GRD->addAction(command);
    }
    ui_->Category_GRD->setContextMenuPolicy(Qt::ActionsContextMenu);
    ui_->Category_frame1->installEventFilter(this);
}

CategoryPage::~CategoryPage() = default;

void CategoryPage::Open(int goodCode, bool mayChange)
{
    FillChoices();
    const bool commands = mayChange && ui_->Category_frame1->count() > 0;
    ui_->CategoryCommands_PNL->setVisible(commands);
    for (QAction *command : actions())
        command->setVisible(commands);
    MoveTo(goodCode);
}

void CategoryPage::MoveTo(int goodCode)
{
    good_ = goodCode;
    Refresh();
}

void CategoryPage::FillChoices()
{
    Branches branches;
    for (const host::Category &node : host_.categories.Tree())
        branches[node.Parent] << node;
    ui_->Category_frame1->clear();
    AddLeaves(branches, 0, QString(), ui_->Category_frame1);
    ui_->Category_frame1->setCurrentIndex(-1);
}

void CategoryPage::Refresh()
{
    data_.Fill_grid(good_);
    const bool any = !data_.KalaCategory_Qry.IsEmpty();
    ui_->DellCat_BTN->setEnabled(any);
    actions().constLast()->setEnabled(any);
    ui_->CategoryHint_LBL->setVisible(!any);
}

bool CategoryPage::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    if (key->key() != Qt::Key_Down || (key->modifiers() & ~Qt::KeypadModifier))
        return QWidget::eventFilter(watched, event);
    // The way down leads into the grid; where there is nothing yet, to what can be chosen.
    if (ui_->Category_GRD->IsEmpty())
        ui_->Category_frame1->showPopup();
    else
        ui_->Category_GRD->setFocus(Qt::OtherFocusReason);
    return true;
}

goods::Refused CategoryPage::Add()
{
    const int category = ui_->Category_frame1->currentData().toInt();
    if (category == 0 || !data_.cat_checker(good_, category))
        return host::Refusal{ui_->Category_frame1, [](host::MessageService &messages) {
                                 messages.MsgRepeatedField(QStringLiteral("دسته"), QStringLiteral("زیر شاخه خالی یا "));
                             }};
    data_.InsertUpdateToKalaCategory(good_, category, Attached);
    Refresh();
    ui_->Category_frame1->setCurrentIndex(-1);
    emit Changed();
    return {};
}

goods::Refused CategoryPage::Delete()
{
    if (data_.KalaCategory_Qry.IsEmpty() || !host_.messages.MsgDeleteItem(QStringLiteral("دسته")))
        return {};
    data_.GoodCatToTemp(ui_->Category_GRD->CurrentKey().toInt(), TakenOff);
    Refresh();
    emit Changed();
    return {};
}
