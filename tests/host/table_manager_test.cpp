#include <gtest/gtest.h>

#include "table_manager.h"

namespace pdfhost {
namespace {

using hostops::Op;
using hostops::OpTraits;

int CountDocs() {
    return 7;
}
template <Op op, typename Fn>
concept Registrable = requires(TableManager& tables, Fn* fn) {
    tables.Register<op>(fn);
};

TEST(TableManager, RegistrationIsTypedByTheOperationList) {
    static_assert(Registrable<Op::HostAppGetDocCount, int()>);
    static_assert(!Registrable<Op::HostAppGetDocCount, int(int)>);
    static_assert(!Registrable<Op::HostAppGetDocByIndex, int()>);
    static_assert(!Registrable<Op::HostWideStringSet, void(HostWideString, const char*)>);
}

TEST(TableManager, RefusesTwoFunctionsForOneOperation) {
    TableManager tables;
    tables.Register<Op::HostAppGetDocCount>(&CountDocs);
    EXPECT_NO_THROW(tables.Register<Op::HostAppGetDocCount>(&CountDocs));
    EXPECT_THROW(tables.Register<Op::HostAppGetDocCount>(+[] { return 1; }), std::logic_error);
}

TEST(TableManager, AbiRecordAnswersFromTheActiveManagerAndNotesTheCaller) {
    using Count = OpTraits<Op::HostAppGetDocCount>;
    const HostTableManager* abi = TableManager::Abi();
    ASSERT_NE(abi, nullptr);
    EXPECT_EQ(abi->size, sizeof(HostTableManager));
    {
        TableManager tables;
        tables.Register<Op::HostAppGetDocCount>(&CountDocs);
        tables.Activate();
        EXPECT_EQ(abi->lookup(Count::category, Count::selector, 42),
                  reinterpret_cast<HostFunction>(&CountDocs));
        EXPECT_EQ(TableManager::CallingPlugin(), 42u);
        EXPECT_EQ(abi->lookup(Count::category, Count::selector + 1, 43), nullptr);
        EXPECT_EQ(TableManager::CallingPlugin(), 43u);
    }
    // A destroyed manager no longer answers.
    EXPECT_EQ(abi->lookup(Count::category, Count::selector, 42), nullptr);
}

}  // namespace
}  // namespace pdfhost
