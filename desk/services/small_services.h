#pragma once

#include "host/services/barcode_service.h"
#include "host/services/clock_service.h"
#include "host/services/finance_service.h"
#include "host/services/keyboard_service.h"
#include "host/services/number_service.h"
#include "host/services/scale_service.h"
#include "host/services/theme_service.h"

#include <QSqlDatabase>

namespace desk {

/// Barcodes completed by the barcode library that the program is linked to.
class Barcodes : public host::BarcodeService
{
public:
    bool LibraryFound() const override { return true; }
    bool CompletionFound() const override { return true; }
    QString Complete_Barcode(const QString &digits) override;
};

/// The clock of this machine, with the solar Hijri calendar.
class Clock : public host::ClockService
{
public:
    QString NowTime() override;
    QString NowDate() override;
    QString NowShamsiDate() override;
};

/// The asset classes in FinanceGoodTypes.
class Finance : public host::FinanceService
{
public:
    explicit Finance(const QSqlDatabase &connection) : m_connection(connection) {}
    QList<host::Entity> Fill_FinanceGoodTypes() override;

private:
    QSqlDatabase m_connection;
};

/// Remembers the layout that screens ask for. The desktop's own switching is left to the desktop: on the systems this
/// runs on a program cannot choose the layout of the whole session.
class Keyboard : public host::KeyboardService
{
public:
    QString GetKeyboardLayoutName() override { return m_layout; }
    void LoadKeyboardLayout(const QString &name) override { m_layout = name; }

private:
    QString m_layout = QString::fromUtf16(Persian);
};

/// Document numbers drawn from Global_ID.
class Numbers : public host::NumberService
{
public:
    explicit Numbers(const QSqlDatabase &connection) : m_connection(connection) {}
    int Save_Global_ID(host::TSoftwarePart part) override;
    void Save_Global_ID(host::TSoftwarePart part, int number) override;
    void Delete_Global_ID(host::TSoftwarePart part, int number) override;

private:
    QSqlDatabase m_connection;
};

/// A shop has scales when the scale database holds items.
class Scales : public host::ScaleService
{
public:
    explicit Scales(const QSqlDatabase &connection) : m_connection(connection) {}
    bool Enabled() const override;

private:
    QSqlDatabase m_connection;
};

/// The look of the house.
class Theme : public host::ThemeService
{
public:
    QColor CaptionColor() const override;
    QFont TitleFont() const override;
};

} // namespace desk
