#pragma once

#include <QLineEdit>

/// The edit of one barcode (or short name) with its "+" button, which asks to complete the number. Codes are shown from
/// left to right, as scanners print them. What does not fit is refused whole, as a part of a barcode is another one.
class BarcodeEdit : public QLineEdit
{
    Q_OBJECT
    /// Characters that may be typed, scanned or pasted.
    Q_PROPERTY(int maxLength READ maxLength WRITE setMaxLength)

public:
    explicit BarcodeEdit(QWidget *parent = nullptr);

    int maxLength() const { return qMax(m_maxLength, m_storedLength); }
    void setMaxLength(int length) { m_maxLength = length; }
    /// Whether the mark between stored barcodes may stand in this one. Default false.
    bool TakesMark() const { return m_takesMark; }
    void SetTakesMark(bool takes) { m_takesMark = takes; }

    /// Shows a stored barcode whole, also one that is longer than may be typed.
    void SetStored(const QString &barcode);
    /// The barcode: what was entered, cleaned, or the stored one as it was.
    QString Barcode() const;
    /// Shows what was entered as it will be kept.
    void ShowCleaned();

signals:
    void CompletionRequested();
    /// Enter was pressed, as scanners do behind each barcode; `accepted` says whether to go on to the next control.
    void Entered(bool &accepted);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    int m_maxLength = 32767;
    int m_storedLength = 0; ///< of the barcode shown by SetStored
    bool m_takesMark = false;
};
