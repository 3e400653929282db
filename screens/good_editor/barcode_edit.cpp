#include "screens/good_editor/barcode_edit.h"

#include "host/look/icons.h"
#include "host/look/theme.h"
#include "rules/barcode_text.h"

#include <QAction>
#include <QKeyEvent>
#include <QValidator>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

class BarcodeValidator : public QValidator
{
public:
    explicit BarcodeValidator(BarcodeEdit *edit) : QValidator(edit), m_edit(*edit) {}

    State validate(QString &input, int &) const override
    {
        const bool marked = input.contains(goods::BarcodeMark) && !m_edit.TakesMark();
        return marked || goods::CleanBarcode(input).size() > m_edit.maxLength() ? Invalid : Acceptable;
    }

private:
    const BarcodeEdit &m_edit;
};

} // namespace

BarcodeEdit::BarcodeEdit(QWidget *parent) : QLineEdit(parent)
{
    QLineEdit::setMaxLength(std::numeric_limits<int>::max()); // cuts; the validator refuses
    setValidator(new BarcodeValidator(this));
    QAction *complete = addAction(host::Icon(host::Glyph::Plus, host::theme::Accent), QLineEdit::TrailingPosition);
    complete->setObjectName(u"complete"_s);
    connect(complete, &QAction::triggered, this, &BarcodeEdit::CompletionRequested);
}

void BarcodeEdit::SetStored(const QString &barcode)
{
    m_storedLength = static_cast<int>(barcode.size());
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
