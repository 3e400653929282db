#pragma once

#include <QtWidgets/QLineEdit>

/// The edit of one barcode (or short name) with its "+" button, which asks to complete the number. Codes are shown from
/// left to right, as scanners print them.
class BarcodeEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit BarcodeEdit(QWidget *parent = nullptr);

signals:
    void CompletionRequested();
};
