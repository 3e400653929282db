#include "screens/goods_list/good_removal.h"

#include "data/goods/good_dm.h"
#include "host/data/database_error.h"
#include "host/host.h"
#include "screens/bulk_changes/bulk_order.h"

#include <QLoggingCategory>

using namespace Qt::StringLiterals;

namespace goods_list {

namespace {

Q_LOGGING_CATEGORY(log, "goods.list", QtWarningMsg)

constexpr int NoticeMilliseconds = 5000;
/// The voucher of the opening stock, as the voucher service counts kinds.
constexpr int OpeningVoucher = 1;

} // namespace

bool GoodRemoval::MayBeDeleted(int code, QWidget *anchor)
{
    if (!host::Granted(m_host, host::TSoftwarePart::Goods, host::TPermission::Delete))
        return false;
    const int voucher = m_goods.Good_GetVoucherCode(code);
    if (m_host.vouchers.IsVoucherApproved(voucher, OpeningVoucher, u"حذف کالا"_s, u"اول دوره"_s))
        return false;
    if (m_host.goodDetails.UniqueDetailCodeInUse(code))
        return false;
    if (m_goods.GoodUsedInWebService(code)) {
        m_host.messages.ShowSmartMessage(host::message::DeleteRefused,
                                         {u"کالای مورد نظر به دلیل استفاده در سفارشگیر همراه یا نیلارا ، "_s},
                                         NoticeMilliseconds, anchor);
        return false;
    }
    return true;
}

bool GoodRemoval::Delete(int code, QWidget *anchor)
{
    bool deleted = false;
    try {
        deleted = MayBeDeleted(code, anchor) && m_goods.Good_Delete(code);
    } catch (const std::exception &error) {
        const auto *database = dynamic_cast<const host::DatabaseError *>(&error);
        qCWarning(log).noquote() << "deleting a good:"
                                 << (database ? database->LogText() : QString::fromUtf8(error.what()));
        m_host.messages.ShowMessage(u"عمليات با اشکال مواجه شد."_s, host::MessageIcon::Information);
    }
    if (deleted)
        bulk_changes::AfterWriting(m_host, u"کالا حذف شد ولی از ترازو برداشته نشد."_s, [&] {
            if (m_host.scales.Enabled())
                m_goods.DeleteGoodInScale(code);
        });
    return deleted;
}

} // namespace goods_list
