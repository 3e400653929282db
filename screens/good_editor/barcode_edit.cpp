#include "screens/good_editor/barcode_edit.h"

#include "host/screens/theme.h"
#include "screens/good_editor/barcode_text.h"

#include <QtGui/QAction>
#include <QtGui/QIcon>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtGui/QPixmap>
#include <QtGui/QValidator>

#include <limits>

namespace {

QIcon PlusIcon()
{
    constexpr int side = 64;
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setPen(QPen(host::theme::Accent(), 7, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(side / 2, 14, side / 2, side - 14);
    painter.drawLine(14, side / 2, side - 14, side / 2);
    return pixmap;
}

class BarcodeValidator : public QValidator
{
public:
    explicit BarcodeValidator(BarcodeEdit *edit) : QValidator(edit), edit_(*edit) {}

    State validate(QString &input, int &) const override
    {
        const bool marked = input.contains(goods::BarcodeMark) && !edit_.TakesMark();
        return marked || goods::CleanBarcode(input).size() > edit_.maxLength() ? Invalid : Acceptable;
    }

private:
    const BarcodeEdit &edit_;
};

} // namespace

BarcodeEdit::BarcodeEdit(QWidget *parent) : QLineEdit(parent)
{
    QLineEdit::setMaxLength(std::numeric_limits<int>::max()); // cuts; the validator refuses
    setValidator(new BarcodeValidator(this));
    QAction *complete = addAction(PlusIcon(), QLineEdit::TrailingPosition);
    complete->setObjectName(QStringLiteral("complete"));
    connect(complete, &QAction::triggered, this, &BarcodeEdit::CompletionRequested);
}

void BarcodeEdit::SetStored(const QString &barcode)
{
    storedLength_ = static_cast<int>(barcode.size());
    setText(barcode);
}

QString BarcodeEdit::Barcode() const
{
    return isModified() ? goods::CleanBarcode(text()) : text();
}

void BarcodeEdit::ShowCleaned()
{
    if (const QString barcode = Barcode(); barcode != text())
        setText(barcode);
}

void BarcodeEdit::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        bool accepted = true;
        emit Entered(accepted);
        if (!accepted)
            return;
    }
    QLineEdit::keyPressEvent(event);
}
