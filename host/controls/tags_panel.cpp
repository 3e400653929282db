#include "host/controls/tags_panel.h"

#include "host/controls/flow_layout.h"
#include "host/look/theme.h"

#include <QLabel>
#include <QMenu>
#include <QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {
namespace {

/// Dark or white text, whichever reads on the colour.
QColor InkOn(const QColor &ground)
{
    const double light = 0.299 * ground.redF() + 0.587 * ground.greenF() + 0.114 * ground.blueF();
    return light > 0.6 ? theme::PaperInk() : QColor(Qt::white);
}

/// A name as the caption of a button or an entry, where an ampersand alone marks a key.
QString Caption(QString name)
{
    return name.replace(u'&', u"&&"_s);
}

QPixmap Dot(const QColor &color)
{
    QPixmap dot(14, 14);
    dot.fill(color);
    return dot;
}

} // namespace

TagsPanel::TagsPanel(QWidget *parent) : QWidget(parent), m_flow(new FlowLayout(this)), m_add(new QToolButton(this))
{
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setMinimumHeight(28);
    m_add->setObjectName(u"add_btn"_s);
    m_add->setText(u"+"_s);
    m_add->setToolTip(u"افزودن برچسب"_s);
    m_add->setFocusPolicy(Qt::TabFocus);
    setFocusProxy(m_add);
    connect(m_add, &QToolButton::clicked, this, &TagsPanel::Offer);
    Rebuild();
}

void TagsPanel::SetAvailable(const QList<Tag> &tags)
{
    m_available = tags;
    SetCodes(m_codes);
}

void TagsPanel::SetCodes(const QList<int> &codes)
{
    m_codes.clear();
    m_hidden.clear();
    for (const int code : codes) {
        const bool known =
            std::any_of(m_available.begin(), m_available.end(), [&](const Tag &tag) { return tag.Code == code; });
        if (known && !m_codes.contains(code))
            m_codes << code;
    }
    Rebuild();
}

QList<int> TagsPanel::Codes() const
{
    return m_codes;
}

QString TagsPanel::CodesText() const
{
    QStringList codes;
    for (const int code : m_codes)
        codes << QString::number(code);
    return (codes + m_hidden).join(u',');
}

QStringList TagsPanel::Names() const
{
    QStringList names;
    for (const int code : m_codes)
        for (const Tag &tag : m_available)
            if (tag.Code == code)
                names << tag.Name;
    return names;
}

void TagsPanel::ShowStored(const QString &codes)
{
    SetCodesText(codes);
    const QStringList parts = codes.split(u',', Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        bool number = false;
        const int code = part.trimmed().toInt(&number);
        if (number && !m_codes.contains(code) && !m_hidden.contains(QString::number(code)))
            m_hidden << QString::number(code);
    }
}

void TagsPanel::SetCodesText(const QString &codes)
{
    QList<int> list;
    const QStringList parts = codes.split(u',', Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        bool number = false;
        const int code = part.trimmed().toInt(&number);
        if (number)
            list << code;
    }
    SetCodes(list);
}

void TagsPanel::setReadOnly(bool readOnly)
{
    m_readOnly = readOnly;
    Rebuild();
}

void TagsPanel::Rebuild()
{
    while (QLayoutItem *item = m_flow->takeAt(0)) {
        if (item->widget() != m_add) {
            item->widget()->hide();
            item->widget()->deleteLater(); // its own button may have asked for this
        }
        delete item;
    }
    for (const int code : std::as_const(m_codes)) {
        const Tag tag =
            *std::find_if(m_available.begin(), m_available.end(), [&](const Tag &known) { return known.Code == code; });
        auto *chip = new QToolButton(this);
        chip->setObjectName(u"Tag_%1"_s.arg(code));
        chip->setText(m_readOnly ? Caption(tag.Name) : Caption(tag.Name) + u"  ✕"_s);
        chip->setFocusPolicy(m_readOnly ? Qt::NoFocus : Qt::TabFocus);
        chip->setStyleSheet(u"QToolButton { background: %1; color: %2; border-radius: 11px; padding: 1px 10px; "
                            "min-height: 20px; border: 2px solid transparent; }"
                            "QToolButton:focus { border-color: palette(window-text); }"_s.arg(tag.Color.name(),
                                                                                              InkOn(tag.Color).name()));
        if (!m_readOnly) {
            chip->setToolTip(u"برداشتن برچسب"_s);
            connect(chip, &QToolButton::clicked, this, [this, code] {
                m_codes.removeOne(code);
                Rebuild();
                emit Changed();
            });
        }
        m_flow->addWidget(chip);
        chip->show();
    }
    m_flow->addWidget(m_add);
    m_add->setVisible(!m_readOnly);
    m_add->setEnabled(m_codes.size() < m_available.size());
    updateGeometry();
}

void TagsPanel::Offer()
{
    // The menu goes with the panel, which may make way for another one while it is open.
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const Tag &tag : std::as_const(m_available)) {
        if (m_codes.contains(tag.Code))
            continue;
        connect(menu->addAction(QIcon(Dot(tag.Color)), Caption(tag.Name)), &QAction::triggered, this,
                [this, code = tag.Code] {
                    m_codes << code;
                    Rebuild();
                    emit Changed();
                });
    }
    menu->popup(m_add->mapToGlobal(m_add->rect().bottomLeft()));
}

} // namespace host
