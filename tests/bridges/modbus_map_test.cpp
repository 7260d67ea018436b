// The map: which address is which signal, as CSV.
#include "bridges/modbus_map.h"

#include "tests/ioshare/test_segment.h"

namespace {

TEST(ModbusMap, HasInputsCoilsAndRegistersInTheOrderOfTheLink) {
    test_server server({"te", "ts", "te"}, {"RENT", "SORT"});
    const io_observer link(server->memory_ident(), io_access::read);
    EXPECT_EQ(csv_of(modbus_map(link)),
              "table,adresse,nom\n"
              "entree_discrete,0,te\n"
              "entree_discrete,1,ts\n"
              "entree_discrete,2,te\n"
              "bobine,0,RENT\n"
              "bobine,1,SORT\n"
              "registre_entree,0,publications_poids_fort\n"
              "registre_entree,1,publications_poids_faible\n"
              "registre_entree,2,age_dixiemes\n"
              "registre_entree,3,etat\n");
}

TEST(ModbusMap, QuotesNamesThatNeedItAndNoOthers) {
    const struct {
        std::string name, field;
    } rows[] = {{"te", "te"},
                {"", ""},
                {"a b", "a b"},
                {"a,b", "\"a,b\""},
                {"a\"b", "\"a\"\"b\""},
                {"\"", "\"\"\"\""},
                {"a\nb", "a\\x0Ab"},
                {"a\x1B,\x7F", "\"a\\x1B,\\x7F\""},
                {"é", "é"},
                {"a=b;c", "a=b;c"}};
    for (const auto& [name, field] : rows)
        EXPECT_EQ(csv_of({{"bobine", 7, name}}), "table,adresse,nom\nbobine,7," + field + "\n");
}

}  // namespace
