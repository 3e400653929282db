#pragma once

class QWidget;
class TGood_DM;

namespace host {
struct Host;
}

namespace goods_list {

/// Deletes a good, or tells why it may not be deleted.
class GoodRemoval
{
public:
    /// Both outlive the object.
    GoodRemoval(host::Host &host, TGood_DM &goods) : m_host(host), m_goods(goods) {}

    /// True when the good is gone. Refused, in this order, by the user's right, an approved voucher of its opening
    /// stock, a unique detail code in use, the web shop, and the host's own rules; whoever refuses tells the user.
    /// The item on the shop's scales is marked for deletion with the good. Any error is told to the user and never
    /// leaves this function. `anchor` is where a notification appears.
    bool Delete(int code, QWidget *anchor);

private:
    bool MayBeDeleted(int code, QWidget *anchor);

    host::Host &m_host;
    TGood_DM &m_goods;
};

} // namespace goods_list
