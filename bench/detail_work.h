#pragma once

#include "gooddetail/serial_dm.h"

namespace bench {

/// Serials of one good of the demo shop (a power tool, with serial, colour and warranty) on their way in and out, as
/// the screens have them go.
class DetailWork
{
public:
    static constexpr int Range = 10000;
    static constexpr int Purchase = 1;
    static constexpr int Sale = 2;

    explicit DetailWork(host::Host &host);

    TSerial_DM &Data() { return m_data; }
    host::DetailMovementService &Movements() { return m_host.detailMovements; }
    static host::TDocumentLine Line(int type, int code);

    /// All throw std::runtime_error when something else than told becomes of the serials.
    void Enter(const host::TDocumentLine &line, qint64 from, qint64 count);
    void Keep(const host::TDocumentLine &line);
    void Save(const host::TDocumentLine &line);
    void Choose(const host::TDocumentLine &line, qint64 from);
    /// The whole document around what is kept for its line: header, line, movement, details, stock.
    void SaveDocument(const host::TDocumentLine &kept);

private:
    host::Host &m_host;
    TSerial_DM m_data;
    host::TDetailValues m_details;
};

} // namespace bench
