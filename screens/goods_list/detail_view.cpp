#include "screens/goods_list/detail_view.h"

#include "host/controls/number_text.h"
#include "host/data/persian_text.h"
#include "host/data/quantity.h"
#include "host/look/theme.h"
#include "screens/goods_list/good_list_columns.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

using host::ColumnFormat;

namespace goods_list {

namespace {

constexpr int ColumnsOfLines = 4;

/// The fields in reading order, column by column.
const QStringList &LineFields()
{
    static const QStringList fields = {u"AbbName"_s,      u"SMSCode"_s,          u"Position"_s,
                                       u"MinAva"_s,       u"AvaBgPrd"_s,         u"CostBgPrd"_s,
                                       u"UserCreated"_s,  u"CreatedDateTime"_s,  u"ConsumerPrice"_s,
                                       u"UserModified"_s, u"ModifiedDateTime"_s, u"Comment"_s};
    return fields;
}

/// A label that shortens its text instead of widening the screen, and tells the whole of it in its tool tip.
class ElidedLabel : public QLabel
{
public:
    using QLabel::QLabel;

    QSize minimumSizeHint() const override { return {24, QLabel::minimumSizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
        // A mixed text (barcodes, dates) keeps to the reading edge of the screen.
        painter.drawText(rect(), static_cast<int>(Qt::AlignAbsolute | Qt::AlignVCenter | Qt::AlignRight), shown);
    }
};

QString ShownText(const QVariant &value, ColumnFormat format)
{
    QString text = value.toString().trimmed();
    switch (format) {
    case ColumnFormat::Quantity:
    case ColumnFormat::Price:
        return host::DisplayNumber(host::TrimDecimal(text));
    case ColumnFormat::Date:
        return host::PersianDigits(text);
    default:
        return text;
    }
}

} // namespace

QString BarcodesText(const QString &abbName)
{
    return abbName.split(u'!', Qt::SkipEmptyParts).join(u"  "_s);
}

DetailView::DetailView(QWidget *parent) : QFrame(parent), m_name(new ElidedLabel(this))
{
    m_name->setObjectName(u"DetailName_LBL"_s);
    m_name->setTextFormat(Qt::PlainText);
    auto *box = new QVBoxLayout(this);
    box->setContentsMargins(12, 6, 12, 8);
    box->setSpacing(4);
    box->addWidget(m_name);
    auto *lines = new QGridLayout;
    lines->setHorizontalSpacing(8);
    lines->setVerticalSpacing(2);
    box->addLayout(lines);

    const QList<host::GridColumn> columns = GoodColumns({});
    const int rows = (static_cast<int>(LineFields().size()) + ColumnsOfLines - 1) / ColumnsOfLines;
    for (int i = 0; i < LineFields().size(); ++i) {
        const QString &field = LineFields().at(i);
        const auto column = std::find_if(columns.begin(), columns.end(),
                                         [&](const host::GridColumn &one) { return one.field == field; });
        AddLine(i % rows, i / rows, field, column->caption.trimmed(), column->format);
    }
}

QStringList DetailView::Fields()
{
    return QStringList{u"Code"_s, u"Name"_s} + LineFields();
}

void DetailView::SetTitleFont(const QFont &font)
{
    m_name->setFont(font);
}

void DetailView::AddLine(int row, int column, const QString &field, const QString &caption, ColumnFormat format)
{
    auto *lines = static_cast<QGridLayout *>(layout()->itemAt(1)->layout());
    auto *label = new QLabel(caption + u" :"_s, this);
    label->setProperty("soft", true);
    auto *value = new ElidedLabel(this);
    value->setObjectName(field + u"_DLB"_s);
    value->setTextFormat(Qt::PlainText);
    lines->addWidget(label, row, column * 2);
    lines->addWidget(value, row, column * 2 + 1);
    lines->setColumnStretch(column * 2 + 1, 1);
    m_lines.append({field, format, value});
}

void DetailView::Show(const std::function<QVariant(const QString &)> &value)
{
    const bool row = value(u"Code"_s).isValid();
    m_name->setText(row ? value(u"Name"_s).toString() : QString());
    for (const Line &line : m_lines) {
        QString text = row ? ShownText(value(line.field), line.format) : QString();
        if (line.field == "AbbName"_L1)
            text = BarcodesText(text);
        line.value->setText(text);
        line.value->setToolTip(host::theme::PlainToolTip(text));
    }
}

} // namespace goods_list
