#include "desk/messages/catalogue.h"

#include "host/services/message_service.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

struct Entry
{
    int number;
    const char16_t *text;
};

// One place for every text that the desk says in a message. %1, %2 … are parameters.
constexpr Entry Catalogue[] = {
    {message::RequiredField, u"کاربر گرامی، لطفاً «%1» را وارد کنید."},
    {message::RepeatedField, u"کاربر گرامی، «%1» تکراری است؛ در فهرست %2 مورد دیگری با همین مقدار ثبت شده است."},
    {message::RepeatedCode, u"کاربر گرامی، «%1» تکراری است و پیش از این ثبت شده است."},
    {message::NotZero, u"کاربر گرامی، مقدار «%1» نمی‌تواند صفر باشد."},
    {message::Percent, u"کاربر گرامی، مقدار «%1» باید بین ۰ و ۱۰۰ باشد."},
    {message::NotSaveable, u"کاربر گرامی، در «%1» نمی‌توان %2 ثبت کرد."},
    {message::HasSubRecords, u"کاربر گرامی، این %1 در «%2» استفاده شده است."},
    {message::DeleteRow, u"کاربر گرامی، آیا از حذف سطر جاری اطمینان دارید؟"},
    {message::DeleteItem, u"کاربر گرامی، آیا از حذف %1 اطمینان دارید؟"},
    {message::ContinueRepeated,
     u"کاربر گرامی، «%1» تکراری است. آیا ادامه می‌دهید؟"},
    {message::Completed, u"%1 با موفقیت انجام شد."},
    {message::NoRight, u"کاربر گرامی، شما اجازه‌ی «%1» در بخش «%2» را ندارید."},
    {message::NoRightTo, u"کاربر گرامی، شما اجازه‌ی «%1» را ندارید."},
    {message::InUse, u"کاربر گرامی، %1 قابل حذف نیست، زیرا %2."},
    {message::RootGroup,
     u"کاربر گرامی، گروه «کليه کالاها» ثابت است و ویرایش یا حذف نمی‌شود."},
    {message::VoucherApproved, u"کاربر گرامی، %1 ممکن نیست، زیرا سند «%2» تأیید شده است."},
    {message::TotalOutOfRange,
     u"کاربر گرامی، حاصل‌ضرب مقدار در قیمت از محدوده‌ی مجاز مبالغ بیرون است."},
    {message::StockWouldBeMinus,
     u"کاربر گرامی، با این تغییر موجودی «%1» در انبار «%2» منفی می‌شود.\nموجودی کنونی: %3 - تغییر: %4"},
    {message::EntityGone, u"کاربر گرامی، %1 دیگر وجود ندارد؛ شاید کاربر دیگری آن را حذف کرده است."},
    {message::DatabaseFailed, u"کاربر گرامی، پایگاه داده پاسخ درستی نداد و کاری ثبت نشد.\n%1"},
    {message::DatabaseSilent, u"پایگاه داده پاسخ نمی‌دهد: %1"},
    {message::CannotOpen, u"پایگاه داده‌ی «%1» باز نشد. %2"},
    {message::AnotherSchema,
     u"«%1» پایگاه داده‌ی این برنامه نیست یا با نسخه‌ی دیگری از آن ساخته شده است. %2"},
    {message::NotWritable, u"در «%1» نمی‌توان نوشت."},
    {message::NoSuchUser, u"کاربری با کد %1 تعریف نشده است."},
    {message::CollationLoses,
     u"کاربر گرامی، ترتیب حروف (collation) این پایگاه داده حروف «ی» و «ک» را نگه نمی‌دارد و نام‌ها هنگام ثبت خراب می‌شوند. پایگاه داده باید با ترتیبی مانند Persian_100_CI_AI_SC_UTF8 ساخته شود."},
    {message::ModuleMissing, u"ماژول کالا بارگذاری نشد.\n%1"},
    {message::CodeOutOfRange, u"کاربر گرامی، کد باید عددی بین %1 و %2 باشد."},
    {message::NotAPicture, u"کاربر گرامی، «%1» تصویر نیست یا خوانده نشد."},
    {message::DiscardChanges,
     u"کاربر گرامی، تغییرات ذخیره نشده است. آیا بدون ذخیره خارج می‌شوید؟"},
    {message::CategoryCircle,
     u"کاربر گرامی، دسته‌ی «%1» نمی‌تواند زیرشاخه‌ی خودش شود."},
    {message::CategoryHasGoods,
     u"کاربر گرامی، در دسته‌ی «%1» %2 کالا ثبت شده است؛ دسته‌ای که کالا دارد زیرشاخه نمی‌گیرد."},
    {message::CategoryHandsOver,
     u"کاربر گرامی، در دسته‌ی «%1» %2 کالا ثبت شده است و دسته‌ای که زیرشاخه دارد کالا نمی‌گیرد. آیا این کالاها به زیرشاخه‌ی تازه منتقل شوند؟"},
    {message::CategoryTooDeep,
     u"کاربر گرامی، شاخه‌های «%1» در این جا بیش از اندازه تو در تو می‌شوند."},
    {message::DocumentChanged,
     u"کاربر گرامی، %1 را در این میان کاربر دیگری تغییر داده یا حذف کرده است. برای ادامه آن را دوباره باز کنید."},
    {message::DocumentAnswered, u"کاربر گرامی، %1 قابل حذف نیست، زیرا کالای آن در %2 برگشت خورده است."},
    {message::ReturnedBeyond, u"کاربر گرامی، مقدار «%1» در %2 برابر %3 است و در %4 روی هم %5 برگشت خورده است."},
    {message::StockMinusOnDay,
     u"کاربر گرامی، با این تغییر موجودی «%1» در انبار «%2» منفی می‌شود.\nمانده در تاریخ %3: %4"},
    {message::DetailsMissing, u"کاربر گرامی، مقدار «%1» با جزئیات آن یکی نیست. جزئیات این سطر را وارد کنید."},
    {message::DetailGone, u"%1 در انبار «%2» موجود نیست."},
    {message::DetailTaken, u"%1 دیگر در انبار «%2» نیست: با %3 رفته است."},
    {message::DetailRepeated, u"%1 هم‌اکنون موجود است: با %2 آمده است."},
    {message::DetailNotOfDocument, u"%1 در %2 نیست یا همه‌ی آن برگشت خورده است."},
    {message::DetailReturned, u"%1 در %2 برگشت خورده است و باید در این سند بماند."},
    {message::MoreRefusals, u"و %1 مورد دیگر"},
    {message::ScanUnknown, u"«%1» کد، بارکد یا سریال هیچ کالایی نیست."},
    {message::ScanNotInStore, u"«%1» از کالای «%2» در انبار «%3» موجود نیست."},
    {message::ScanTwice, u"«%1» در این سند هست."},
    {message::ScanNotSold,
     u"«%1» در سند فروش انتخاب‌شده نیست یا برگشت خورده است."},
    {message::DocumentWithoutLines, u"کاربر گرامی، سند هیچ سطری ندارد."},
    {message::LineWithoutAmount, u"کاربر گرامی، مقدار «%1» وارد نشده است."},
    {message::SameStores, u"کاربر گرامی، انبار مبدأ و مقصد یکی است."},
    {message::NoSuchDocument, u"کاربر گرامی، %1 وجود ندارد."},
    {message::BeforeAnswered, u"کاربر گرامی، تاریخ برگشت پیش از تاریخ %1 (%2) است."},
    {message::DetailsNotKept, u"برای این کالا جزئیاتی نگهداری نمی‌شود."},
    {message::DetailsDecide, u"مقدار این کالا از جزئیات آن به دست می‌آید (F6)."},
    {message::NoHistory, u"«%1» سریال یا بارکد هیچ یک از جزئیات کالاها نیست."},
    {message::ScanPending,
     u"کاربر گرامی، «%1» هنوز سطری نشده است. با Enter آن را وارد یا از خانه‌ی کالا پاک کنید."},
    {message::DatedAfterReturn, u"کاربر گرامی، تاریخ %1 (%2) پس از تاریخ %3 است."},
    {message::GiveUpDetails,
     u"کاربر گرامی، جزئیات انتخاب‌شده در انبار تازه نیست و کنار گذاشته می‌شود. آیا انبار تغییر کند؟"},
    {message::DetailsSettingOff,
     u"کاربر گرامی، سطر «%1» جزئیات ثبت‌شده دارد و مقدار و انبار آن بی جزئیات تغییر نمی‌کند. «نگهداری جزئیات کالا» را در تنظیمات روشن کنید."},

    {message::NoBackupOfServer,
     u"پایگاه داده روی سرور است؛ نسخه‌ی پشتیبان آن را سرور می‌گیرد."},
    {message::DatabaseInUse,
     u"«%1» در برنامه‌ی دیگری باز است؛ نخست آن را ببندید."},
    {message::RestoreDatabase,
     u"کاربر گرامی، پایگاه داده‌ی کنونی کنار گذاشته و «%1» به جای آن باز می‌شود. آیا ادامه می‌دهید؟"},
    {message::Restored,
     u"نسخه‌ی پشتیبان بازگردانده شد. پایگاه داده‌ی پیشین در این فایل مانده است:\n\u2066%1\u2069"},

    {message::StrangeColumns, u"آنچه در آن نیست یا از نوع دیگری است: %1"},
    {message::LaterDatabase,
     u"«%1» با نسخه‌ی تازه‌تری از این برنامه ساخته یا به‌روز شده است. نسخه‌ی تازه‌تر برنامه را نصب کنید."},
    {message::EarlierDatabase,
     u"کاربر گرامی، «%1» با نسخه‌ی پیشین برنامه ساخته شده است. نخست نسخه‌ی پشتیبانی از آن در این فایل گذاشته می‌شود:\n\u2066%2\u2069\nآیا پایگاه داده به‌روز شود؟"},
    {message::EarlierOnServer,
     u"کاربر گرامی، «%1» با نسخه‌ی پیشین برنامه ساخته شده است. نخست در سرور از آن نسخه‌ی پشتیبان بگیرید.\nآیا پایگاه داده به‌روز شود؟"},
    {message::EarlierUnattended,
     u"«%1» با نسخه‌ی پیشین این برنامه ساخته شده است. برنامه را یک بار خودتان باز کنید تا به‌روز شود."},
    {message::NotUpgraded,
     u"کاربر گرامی، پایگاه داده به‌روز نشد و همان است که بود.\n%1"},

    {host::message::ItemInUse, u"کاربر گرامی، این %1 در کالاها یا دسته بندی ها استفاده شده است و قابل حذف نیست."},
    {host::message::OpeningPeriodClosed, u"کاربر گرامی، به دلیل %1، %2 ممکن نیست."},
    {host::message::DeleteRefused, u"کاربر گرامی، %1 قابل حذف نیست."},
    {host::message::SecondQuantityDiffers,
     u"کاربر گرامی، مقدار ۲ با مقدار ۱ و فرمول واحدها هم‌خوان نیست."},
    {host::message::TooManyDigits, u"کاربر گرامی، کد %1 نمی‌تواند بیش از %2 باشد."},
    {host::message::OpeningDetailsMissing,
     u"کاربر گرامی، جزئیات مقدار اول دوره‌ی کالا وارد نشده است."},
    {host::message::ReplaceTypedQuantity,
     u"کاربر گرامی، مقداری که وارد کرده‌اید با مقدار محاسبه‌شده یکی نیست. آیا مقدار محاسبه‌شده جایگزین شود؟"},
    {host::message::MoveDetailsToStore,
     u"کاربر گرامی، برای این سطر جزئیات وارد شده است. آیا جزئیات هم به انبار جدید منتقل شود؟"},
};

} // namespace

QString MessageText(int number, const QStringList &parameters)
{
    const auto *entry = std::find_if(std::begin(Catalogue), std::end(Catalogue),
                                     [number](const Entry &each) { return each.number == number; });
    if (entry == std::end(Catalogue))
        return u"پیغام شماره‌ی %1: %2"_s.arg(number).arg(parameters.join(u"، "_s));
    QString text;
    for (const char16_t *at = entry->text; *at; ++at) {
        const bool place = at[0] == u'%' && at[1] >= u'1' && at[1] <= u'9';
        // Parameters go in in one pass: a parameter that itself holds "%1" stays as it is.
        if (place)
            text += parameters.value(*++at - u'1');
        else
            text += QChar(*at);
    }
    return text;
}

} // namespace desk
