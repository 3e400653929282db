#include "desk/levels/level_titles.h"

#include "desk/messages/catalogue.h"
#include "host/data/persian_text.h"
#include "ui_level_titles.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

/// The width of CostLevel.Name and DiscountLevel.Name.
constexpr int LongestTitle = 50;

/// The first entry of the choosers of a default level: a level of that name could not be told from it.
const QString DefaultEntry = u"پيش فرض"_s;

QString Comparable(const QString &title)
{
    return host::Fold(title).simplified();
}

} // namespace

TLevel_Titles_FRM::TLevel_Titles_FRM(host::Host &host, LevelKind kind)
    : TBaseSave_FRM(host, host::TSoftwarePart::Goods, host::TFormMode::Edit, host.mainWindow), m_kind(kind),
      m_ui(std::make_unique<Ui::LevelTitles>()), m_store(host.DM.ADOConnection1, kind)
{
    setObjectName(u"TLevel_Titles_FRM"_s);
    m_ui->setupUi(Content());
    const bool cost = kind == LevelKind::Cost;
    SetTitle(cost ? u"عناوین سطوح قیمتی"_s : u"عناوین سطوح تخفیف"_s);
    SetDiscardQuestion(MessageText(message::DiscardChanges));
    m_ui->Hint_LBL->setText(
        cost
            ? u"عنوان هر سطح در ستون‌های لیست کالا و در قیمت‌های کالا دیده می‌شود."_s
            : u"عنوان هر سطح در تخفیف‌های کالا دیده می‌شود؛ سطح بی‌عنوان با شماره نامیده می‌شود."_s);
}

TLevel_Titles_FRM::~TLevel_Titles_FRM() = default;

bool TLevel_Titles_FRM::Change()
{
    if (!host::Granted(m_host, SoftwarePart(), host::TPermission::Change))
        return false;
    ShowModally();
    return m_changed;
}

QString TLevel_Titles_FRM::Number(qsizetype row) const
{
    return (m_kind == LevelKind::Cost ? u"سطح قیمتی %1"_s : u"سطح تخفیف %1"_s).arg(m_loaded.at(row).code);
}

void TLevel_Titles_FRM::FormShow()
{
    m_loaded = m_store.Titles();
    for (qsizetype row = 0; row < m_loaded.size(); ++row) {
        auto *edit = new QLineEdit(m_loaded.at(row).title, Content());
        edit->setObjectName(u"Title%1_EDT"_s.arg(m_loaded.at(row).code));
        edit->setMaxLength(LongestTitle);
        if (m_kind == LevelKind::Discount)
            edit->setPlaceholderText(Number(row));
        m_ui->Titles_LAY->addRow(Number(row) + u" :"_s, edit);
        m_edits << edit;
    }
    WatchChanges();
    SetIsSaved(true);
    if (!m_edits.isEmpty())
        m_edits.constFirst()->setFocus();
}

bool TLevel_Titles_FRM::FormKeyDown(QKeyEvent *event)
{
    return GoOnByEnter(event) || TBaseSave_FRM::FormKeyDown(event);
}

QString TLevel_Titles_FRM::Typed(qsizetype row) const
{
    const QString text = m_edits.at(row)->text();
    return text == m_loaded.at(row).title ? text : text.simplified();
}

bool TLevel_Titles_FRM::IsChanged(qsizetype row) const
{
    return Typed(row) != m_loaded.at(row).title;
}

std::vector<host::Check> TLevel_Titles_FRM::Validate()
{
    return {{u"Given"_s, [this] { return CheckGiven(); }}, {u"Unique"_s, [this] { return CheckUnique(); }}};
}

host::Refused TLevel_Titles_FRM::CheckGiven() const
{
    for (qsizetype row = 0; m_kind == LevelKind::Cost && row < m_edits.size(); ++row)
        if (Typed(row).isEmpty())
            return host::Required(m_edits.at(row), Number(row));
    return {};
}

host::Refused TLevel_Titles_FRM::CheckUnique() const
{
    QSet<QString> taken = {Comparable(DefaultEntry)};
    // Titles that are left alone stand as they are now: another desk may have changed them. A level without one goes by
    // its number.
    const QList<LevelTitle> now = m_store.Titles();
    for (qsizetype row = 0; row < m_edits.size(); ++row) {
        const QString title = IsChanged(row) ? QString() : now.value(row).title;
        if (!IsChanged(row) || Typed(row).isEmpty())
            taken << Comparable(title.isEmpty() ? Number(row) : title);
    }
    for (qsizetype row = 0; row < m_edits.size(); ++row) {
        const QString title = Comparable(Typed(row));
        if (!IsChanged(row) || title.isEmpty())
            continue;
        if (taken.contains(title))
            return host::Repeated(m_edits.at(row), Number(row), Title());
        taken << title;
    }
    return {};
}

void TLevel_Titles_FRM::Write()
{
    QList<LevelTitle> changed;
    for (qsizetype row = 0; row < m_edits.size(); ++row)
        if (IsChanged(row))
            changed << LevelTitle{m_loaded.at(row).code, Typed(row)};
    if (changed.isEmpty())
        return;
    m_store.Save(changed);
    m_changed = true;
}

void TLevel_Titles_FRM::Proceed()
{
    TBaseSave_FRM::Proceed();
    done(Accepted);
}

} // namespace desk
