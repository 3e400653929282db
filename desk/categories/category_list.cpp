#include "desk/categories/category_list.h"

#include "desk/messages/catalogue.h"
#include "host/data/persian_text.h"
#include "ui_category_list.h"

#include <QKeyEvent>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace desk {

TCategory_List_FRM::TCategory_List_FRM(host::Host &host)
    : TBaseDock_FRM(host, host::TSoftwarePart::Goods, host::TFormMode::Edit, host.mainWindow),
      m_ui(std::make_unique<Ui::CategoryList>()), m_store(host.DM.ADOConnection1)
{
    setObjectName(u"TCategory_List_FRM"_s);
    m_ui->setupUi(Content());
    SetTitle(u"دسته بندی کالا"_s);
    AddCommands();
    BindTree();
}

TCategory_List_FRM::~TCategory_List_FRM() = default;

void TCategory_List_FRM::AddCommands()
{
    using Run = void (TCategory_List_FRM::*)();
    for (const auto &[name, caption, key, run] :
         {std::tuple(u"New_BTN"_s, u"جدید F4"_s, QKeySequence(Qt::Key_F4), Run(&TCategory_List_FRM::NewNeighbour)),
          std::tuple(u"NewBranch_BTN"_s, u"زیرشاخه Insert"_s, QKeySequence(Qt::Key_Insert),
                     Run(&TCategory_List_FRM::NewBranch)),
          std::tuple(u"Edit_BTN"_s, u"تغییر نام F5"_s, QKeySequence(Qt::Key_F5), Run(&TCategory_List_FRM::Rename)),
          std::tuple(u"Del_BTN"_s, u"حذف F7"_s, QKeySequence(Qt::Key_F7), Run(&TCategory_List_FRM::Delete)),
          std::tuple(u"Cut_BTN"_s, u"برداشتن Ctrl+X"_s, QKeySequence(QKeySequence::Cut), Run(&TCategory_List_FRM::Cut)),
          std::tuple(u"Paste_BTN"_s, u"گذاشتن در این شاخه Ctrl+V"_s, QKeySequence(QKeySequence::Paste),
                     Run(&TCategory_List_FRM::Paste))})
        Bind(AddFooterCommand(name, caption), key, AfterEditing([this, run = run] { (this->*run)(); }));
    Bind(AddFooterButton(u"EXit_BTN"_s, u"خروج Esc"_s), {}, [this] { reject(); });
    BindKey(Qt::Key_F2, u"تغییر نام"_s, AfterEditing([this] { Rename(); }));
    BindKey(Qt::CTRL | Qt::Key_Up, u"جلوتر"_s, AfterEditing([this] { Shift(-1); }));
    BindKey(Qt::CTRL | Qt::Key_Down, u"عقب‌تر"_s, AfterEditing([this] { Shift(1); }));
    // Right to left: a branch opens to the left.
    BindKey(Qt::CTRL | Qt::Key_Left, u"یک پله پایین‌تر"_s, AfterEditing([this] { Deeper(); }));
    BindKey(Qt::CTRL | Qt::Key_Right, u"یک پله بالاتر"_s, AfterEditing([this] { Higher(); }));
}

std::function<void()> TCategory_List_FRM::AfterEditing(const std::function<void()> &run)
{
    return [this, run] {
        if (m_ui->Categories_TRE->IsEditing())
            m_ui->Categories_TRE->setFocus(); // takes the name first
        else
            run();
    };
}

void TCategory_List_FRM::BindTree()
{
    CategoryTreeView *tree = m_ui->Categories_TRE;
    const auto command = [this](const std::function<void()> &body) { Command(Title(), body); };
    // A name that could not be stored stays open, whether it was refused or the database failed.
    const auto store = [this, tree](const std::function<void()> &body) {
        if (!Command(Title(), body))
            tree->EditAgain();
    };
    connect(tree, &CategoryTreeView::NewNamed, this,
            [this, store](const QString &name, CategoryStore::Place place) { store([&] { StoreNew(name, place); }); });
    connect(tree, &CategoryTreeView::Renamed, this,
            [this, store](int code, const QString &name) { store([&] { StoreName(code, name); }); });
    connect(tree, &CategoryTreeView::Dropped, this, [this, command](int code, CategoryStore::Place place) {
        command([&] {
            if (Allowed())
                Move(code, place);
        });
    });
    connect(tree, &CategoryTreeView::GivenUp, this, [this, tree, command] { command([&] { Fill(tree->Current()); }); });
    connect(tree, &CategoryTreeView::itemDoubleClicked, this, [this, command] { command([&] { Rename(); }); });
    connect(tree, &CategoryTreeView::Typed, this, [this](const QString &text) {
        m_ui->Search_EDT->setFocus();
        m_ui->Search_EDT->setText(text);
    });
    connect(m_ui->Search_EDT, &QLineEdit::textChanged, tree, &CategoryTreeView::Search);
    BindSearch(m_ui->Search_EDT, tree, [tree] { tree->setFocus(); });
}

void TCategory_List_FRM::FormShow()
{
    m_cut = 0;
    Fill(0);
    m_ui->Categories_TRE->setFocus();
}

void TCategory_List_FRM::Fill(int current)
{
    m_ui->Categories_TRE->Fill(m_store.All(), m_store.GoodsCounts());
    m_ui->Categories_TRE->Search(m_ui->Search_EDT->text());
    m_ui->Categories_TRE->StandOn(
        current); // the next key is for what was just changed, whatever the search finds first
    m_ui->Count_LBL->setText(
        u"%1 دسته   ·   جابه‌جایی با Ctrl و جهت‌نماها: بالا و پایین در همین شاخه، چپ زیر دسته‌ی "
        "بالایی، راست یک پله بالاتر"_s.arg(host::PersianDigits(QString::number(m_ui->Categories_TRE->Count()))));
}

bool TCategory_List_FRM::Allowed()
{
    return host::Granted(m_host, SoftwarePart(), host::TPermission::Change);
}

bool TCategory_List_FRM::Tell(const CategoryStore::Refusal &refusal)
{
    if (refusal)
        m_host.messages.ShowMessage(*refusal, host::MessageIcon::Warning, Title());
    return refusal.has_value();
}

int TCategory_List_FRM::Behind(int code) const
{
    const QList<int> branches = m_ui->Categories_TRE->Branches(m_ui->Categories_TRE->ParentOf(code));
    return branches.value(branches.indexOf(code) + 1);
}

void TCategory_List_FRM::NewNeighbour()
{
    if (!Allowed())
        return;
    m_ui->Search_EDT->clear();
    const int current = m_ui->Categories_TRE->Current();
    m_ui->Categories_TRE->EditNew({m_ui->Categories_TRE->ParentOf(current), current == 0 ? 0 : Behind(current)});
}

void TCategory_List_FRM::NewBranch()
{
    const int current = m_ui->Categories_TRE->Current();
    if (current == 0 || !Allowed())
        return;
    m_ui->Search_EDT->clear();
    m_ui->Categories_TRE->EditNew({current, 0});
}

void TCategory_List_FRM::Rename()
{
    if (Allowed())
        m_ui->Categories_TRE->EditCurrent();
}

void TCategory_List_FRM::StoreNew(const QString &name, const CategoryStore::Place &place)
{
    const int goods = m_store.GoodsCounts().value(place.parent);
    bool takeGoods = false;
    if (goods > 0 && place.parent != 0) {
        const QList<host::Category> way = m_store.Path(place.parent);
        const QString parent = way.isEmpty() ? QString() : way.constLast().Name;
        takeGoods = m_host.messages.Ask(
            MessageText(message::CategoryHandsOver, {parent, host::PersianDigits(QString::number(goods))}), false);
        if (!takeGoods)
            return m_ui->Categories_TRE->EditAgain();
    }
    int code = 0;
    if (Tell(m_store.Add(name, place, takeGoods, code)))
        m_ui->Categories_TRE->EditAgain();
    else
        Fill(code);
}

void TCategory_List_FRM::StoreName(int code, const QString &name)
{
    if (Tell(m_store.Rename(code, name)))
        m_ui->Categories_TRE->EditAgain();
    else
        Fill(code);
}

void TCategory_List_FRM::Delete()
{
    CategoryTreeView *tree = m_ui->Categories_TRE;
    const int code = tree->Current();
    if (code == 0 || !Allowed() || Tell(m_store.ReasonToKeep(code)) ||
        !m_host.messages.MsgDeleteItem(u"دسته‌ی «%1»"_s.arg(tree->CurrentName())))
        return;
    const QList<int> neighbours = tree->Branches(tree->ParentOf(code));
    const int place = static_cast<int>(neighbours.indexOf(code));
    const int after = neighbours.value(place + 1, neighbours.value(place - 1, tree->ParentOf(code)));
    if (!Tell(m_store.Delete(code)))
        Fill(after);
}

void TCategory_List_FRM::Move(int code, const CategoryStore::Place &place)
{
    if (!Tell(m_store.Move(code, place)))
        m_cut = 0;
    m_ui->Categories_TRE->MarkCut(m_cut);
    Fill(code);
}

void TCategory_List_FRM::Shift(int step)
{
    CategoryTreeView *tree = m_ui->Categories_TRE;
    const int code = tree->Current();
    const QList<int> neighbours = tree->Branches(tree->ParentOf(code));
    const qsizetype to = neighbours.indexOf(code) + step;
    if (code == 0 || to < 0 || to >= neighbours.size() || !Allowed())
        return;
    Move(code, {tree->ParentOf(code), neighbours.value(step < 0 ? to : to + 1)});
}

void TCategory_List_FRM::Deeper()
{
    CategoryTreeView *tree = m_ui->Categories_TRE;
    const int code = tree->Current();
    const QList<int> neighbours = tree->Branches(tree->ParentOf(code));
    const qsizetype place = neighbours.indexOf(code);
    if (code != 0 && place > 0 && Allowed())
        Move(code, {neighbours.at(place - 1), 0});
}

void TCategory_List_FRM::Higher()
{
    CategoryTreeView *tree = m_ui->Categories_TRE;
    const int code = tree->Current();
    const int parent = tree->ParentOf(code);
    if (code != 0 && parent != 0 && Allowed())
        Move(code, {tree->ParentOf(parent), Behind(parent)});
}

void TCategory_List_FRM::Cut()
{
    if (!Allowed())
        return;
    m_cut = m_ui->Categories_TRE->Current();
    m_ui->Categories_TRE->MarkCut(m_cut);
}

void TCategory_List_FRM::Paste()
{
    if (m_cut != 0 && m_ui->Categories_TRE->Current() != 0)
        Move(m_cut, {m_ui->Categories_TRE->Current(), 0});
}

bool TCategory_List_FRM::FormKeyDown(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter || !m_ui->Categories_TRE->hasFocus())
        return GoOnByEnter(event) || TBaseDock_FRM::FormKeyDown(event);
    Rename();
    return true;
}

} // namespace desk
