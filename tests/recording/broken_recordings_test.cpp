// Files that are no recording, each with the line and the reason that it is told with.
#include <gtest/gtest.h>

#include <sstream>

#include "recording/recording_reader.h"
#include "session/failure.h"

namespace {

const std::string head = "ms,genre,nom,valeur\n";
const std::string begun = head + "0,session,format,1\n0,session,station,essai\n";
const std::string with_desk = begun + "0,pupitre,dc,0\n0,pupitre,ac,0\n0,pupitre,atu,0\n";
// Nine lines.
const std::string block = with_desk + "0,entree,s1,1\n0,entree,s2,0\n0,sortie,C1,0\n";

/// What the reader says to these bytes; how many events it read, where it says nothing.
std::string verdict(const std::string& bytes) {
    std::stringbuf buffer(bytes);
    try {
        recording_reader reader("f", buffer);
        std::size_t events = reader.head().events.size();
        while (reader.peek()) {
            (void)reader.take();
            ++events;
        }
        return std::to_string(events) + (reader.whole() ? " whole" : " cut");
    } catch (const failure& why) {
        EXPECT_EQ(why.status, exit_status::refused);
        return why.why;
    }
}

struct broken {
    std::string bytes, reason;
};

void expect_reasons(const std::vector<broken>& cases) {
    for (const auto& [bytes, reason] : cases)
        EXPECT_EQ(verdict(bytes), "f: ligne " + reason) << bytes;
}

TEST(BrokenRecordings, TheHeadRowComesFirst) {
    const std::string reason = "1: \"ms,genre,nom,valeur\" est attendu";
    expect_reasons({
        {"", reason},
        {"ms,genre,nom,valeur", reason},
        {"0,session,format,1\n", reason},
        {"ms,genre,nom,Valeur\n", reason},
        {"\xEF\xBB\xBFms,genre,nom,valeur\n", reason},
        {"ms;genre;nom;valeur\n", "1: moins de quatre champs"},
        {"ms,genre,nom,valeur\r\n", "1: un retour chariot"},
        {"\"ms\",genre,nom,valeur\n", "1: des guillemets inutiles"},
        {"$version quorin $end\n", "1: moins de quatre champs"},
        {"\n", "1: moins de quatre champs"},
        {std::string(1, '\0'), reason},
    });
}

TEST(BrokenRecordings, TheFirstBlockHasItsOrder) {
    const std::string misplaced = ": cette ligne n'est pas à sa place dans le premier bloc";
    expect_reasons({
        {head, "2: le fichier est coupé dans le premier bloc"},
        {head + "0,session,format,2\n", "2: \"session,format,1\" est attendu"},
        {head + "0,session,format,01\n", "2: \"session,format,1\" est attendu"},
        {head + "0,session,station,zk4\n", "2: \"session,format,1\" est attendu"},
        {head + "0,panne,te,stuck0\n", "2: \"session,format,1\" est attendu"},
        {head + "0,entree,te,1\n", "2: \"session,format,1\" est attendu"},
        {head + "0,sortie,te,1\n", "2: \"session,format,1\" est attendu"},
        {head + "0,pupitre,dc,0\n", "2: \"session,format,1\" est attendu"},
        {head + "0,exercice,titre,x\n", "2: \"session,format,1\" est attendu"},
        {head + "0,incident,1,x\n", "2: \"session,format,1\" est attendu"},
        {head + "0,session,fin,x\n", "2: \"session,format,1\" est attendu"},
        {head + "10,session,format,1\n", "2: \"session,format,1\" est attendu"},
        {head + "0,session,format,1\n0,session,titre,x\n", "3: \"session,station\" est attendu"},
        {head + "0,session,format,1\n0,entree,te,1\n", "3: \"session,station\" est attendu"},
        {head + "0,session,format,1\n0,session,station,\n", "3: une valeur manque"},
        {begun + "0,session,graine,\n", "4: une valeur manque"},
        {begun + "0,session,titre,\n", "4: une valeur manque"},
        {begun + "0,session,,1\n", "4: un nom manque"},
        {begun, "4: le fichier est coupé dans le premier bloc"},
        {begun + "0,entree,s1,1\n", "5: le fichier est coupé dans le premier bloc"},
        {begun + "0,pupitre,dc,0\n", "5: le fichier est coupé dans le premier bloc"},
        {begun + "0,pupitre,dc,1\n", "4: dc, ac et atu sont attendus, à 0"},
        {begun + "0,pupitre,ac,0\n", "4: dc, ac et atu sont attendus, à 0"},
        {begun + "0,pupitre,init,0\n", "4: dc, ac et atu sont attendus, à 0"},
        {begun + "0,pupitre,dc,0\n0,pupitre,dc,0\n", "5: dc, ac et atu sont attendus, à 0"},
        {begun + "0,pupitre,dc,0\n0,entree,s1,0\n", "5: dc, ac et atu sont attendus, à 0"},
        {with_desk + "0,pupitre,dc,0\n", "7: dc, ac et atu sont attendus, à 0"},
        {with_desk + "0,panne,s1,stuck0\n", "7" + misplaced},
        {with_desk + "0,session,graine,2\n", "7" + misplaced},
        {with_desk + "0,exercice,titre,x\n", "7" + misplaced},
        {begun + "0,panne,s1,stuck0\n0,session,graine,2\n", "5" + misplaced},
        {begun + "0,exercice,titre,x\n0,panne,s1,stuck0\n", "5" + misplaced},
        {with_desk + "0,sortie,C1,1\n", "7: une commande vaut 0 avant le premier pas"},
        {with_desk + "0,incident,1,x\n",
         "7: cette ligne n'est pas à sa place dans le premier bloc"},
    });
}

TEST(BrokenRecordings, FaultsOfTheStartAreTheStations) {
    const std::string rest =
        "0,pupitre,dc,0\n0,pupitre,ac,0\n0,pupitre,atu,0\n0,entree,s1,1\n0,sortie,C1,0\n";
    expect_reasons({
        {begun + "0,panne,s9,stuck0\n" + rest, "4: \"s9\" n'est ni une entrée ni une sortie"},
        {begun + "0,panne,s1,dead\n" + rest, "4: \"dead\" n'est pas une panne de s1"},
        {begun + "0,panne,C1,stuck0\n" + rest, "4: \"stuck0\" n'est pas une panne de C1"},
        {begun + "0,panne,s1,\n" + rest, "4: cette ligne ne change rien"},
        {begun + "0,panne,s1,broken\n" + rest, "4: \"broken\" n'est pas une panne"},
        {begun + "0,panne,s1,late\n0,panne,s1,late\n" + rest, "5: cette ligne ne change rien"},
    });
}

TEST(BrokenRecordings, TimesAreWholeAndNeverFall) {
    expect_reasons({
        {block + "-10,entree,s1,0\n", "10: \"-10\" n'est pas un temps en millisecondes"},
        {block + "+10,entree,s1,0\n", "10: \"+10\" n'est pas un temps en millisecondes"},
        {block + "010,entree,s1,0\n", "10: \"010\" n'est pas un temps en millisecondes"},
        {block + "1.5,entree,s1,0\n", "10: \"1.5\" n'est pas un temps en millisecondes"},
        {block + "1e3,entree,s1,0\n", "10: \"1e3\" n'est pas un temps en millisecondes"},
        {block + ",entree,s1,0\n", "10: \"\" n'est pas un temps en millisecondes"},
        {block + " 10,entree,s1,0\n", "10: \" 10\" n'est pas un temps en millisecondes"},
        {block + "10 ,entree,s1,0\n", "10: \"10 \" n'est pas un temps en millisecondes"},
        {block + "0x10,entree,s1,0\n", "10: \"0x10\" n'est pas un temps en millisecondes"},
        {block + "99999999999999999999,entree,s1,0\n",
         "10: \"99999999999999999999\" n'est pas un temps en millisecondes"},
        {block + "1000000000001,entree,s1,0\n", "10: un temps au-delà de 10^12 ms"},
        {block + "20,entree,s1,0\n10,entree,s2,1\n", "11: le temps recule"},
        {block + "20,entree,s1,0\n0,entree,s1,1\n", "11: le temps recule"},
        {block + "20,entree,s1,0\n19,session,fin,x\n", "11: le temps recule"},
    });
}

TEST(BrokenRecordings, EveryRowSaysSomethingNewOfSomethingKnown) {
    const std::string same = ": cette ligne ne change rien";
    expect_reasons({
        {block + "10,capteur,s1,0\n", "10: \"capteur\" n'est pas un genre"},
        {block + "10,,s1,0\n", "10: \"\" n'est pas un genre"},
        {block + "10,Entree,s1,0\n", "10: \"Entree\" n'est pas un genre"},
        {block + "10,entrée,s1,0\n", "10: \"entrée\" n'est pas un genre"},
        {block + "10,entree,\"s\n3\",0\n", "10: un octet qui n'a pas de place dans un nom"},
        {block + "10,exercice,a\tb,0\n", "10: un octet qui n'a pas de place dans un nom"},
        {block + "10,entree,s3,0\n", "10: \"s3\" n'est pas dans le premier bloc"},
        {block + "10,entree,C1,0\n", "10: \"C1\" n'est pas dans le premier bloc"},
        {block + "10,sortie,s1,0\n", "10: \"s1\" n'est pas dans le premier bloc"},
        {block + "10,pupitre,init,1\n", "10: \"init\" n'est pas dans le premier bloc"},
        {begun + "0,entree,s1,1\n0,sortie,C1,0\n5,pupitre,dc,1\n",
         "6: \"dc\" n'est pas dans le premier bloc"},
        {block + "10,entree,s1,1\n", "10" + same},
        {block + "10,sortie,C1,0\n", "10" + same},
        {block + "0,sortie,C1,0\n", "10" + same},
        {block + "10,pupitre,dc,0\n", "10" + same},
        {block + "10,panne,s1,\n", "10" + same},
        {block + "10,panne,s1,late\n20,panne,s1,late\n", "11" + same},
        {block + "10,entree,s1,0\n10,entree,s1,0\n", "11" + same},
        {block + "10,panne,s3,late\n", "10: \"s3\" n'est ni une entrée ni une sortie"},
        {block + "10,panne,s1,slow\n", "10: \"slow\" n'est pas une panne de s1"},
        {block + "10,panne,C1,late\n", "10: \"late\" n'est pas une panne de C1"},
        {block + "10,panne,s1,STUCK0\n", "10: \"STUCK0\" n'est pas une panne"},
        {block + "10,session,fin,x\n10,session,fin,x\n", "11: rien ne suit la fin"},
        {block + "10,session,fin,x\n20,entree,s1,0\n", "11: rien ne suit la fin"},
        {block + "10,session,fin,x\n1", "11: rien ne suit la fin"},
        {block + "10,session,fin,x\n\n", "11: moins de quatre champs"},
    });
}

TEST(BrokenRecordings, ValuesAreWholeNumbersInTheirOneForm) {
    expect_reasons({
        {block + "10,entree,s1,\n", "10: \"\" n'est pas un entier de 32 bits"},
        {block + "10,entree,s1,00\n", "10: \"00\" n'est pas un entier de 32 bits"},
        {block + "10,entree,s1,-0\n", "10: \"-0\" n'est pas un entier de 32 bits"},
        {block + "10,entree,s1,+2\n", "10: \"+2\" n'est pas un entier de 32 bits"},
        {block + "10,entree,s1,1.0\n", "10: \"1.0\" n'est pas un entier de 32 bits"},
        {block + "10,sortie,C1,2147483648\n", "10: \"2147483648\" n'est pas un entier de 32 bits"},
        {block + "10,sortie,C1,-2147483649\n",
         "10: \"-2147483649\" n'est pas un entier de 32 bits"},
        {block + "10,pupitre,dc,2\n", "10: \"2\" n'est ni 0 ni 1"},
        {block + "10,pupitre,dc,\n", "10: \"\" n'est ni 0 ni 1"},
    });
}

TEST(BrokenRecordings, AReasonIsOneLineWhateverTheBytes) {
    expect_reasons({
        {block + "10,\"a\nb\",s1,0\n", "10: \"a\\x0Ab\" n'est pas un genre"},
        {block + "\"1\n0\",entree,s1,0\n", "10: \"1\\x0A0\" n'est pas un temps en millisecondes"},
        {block + "10,panne,s1,\"a\r\nb\"\n", "10: \"a\\x0D\\x0Ab\" n'est pas une panne"},
        {block + "10,entree,s1,\"0\n\"\n", "10: \"0\\x0A\" n'est pas un entier de 32 bits"},
    });
}

TEST(BrokenRecordings, TitleAndEndAreOneLine) {
    const std::string lines = ": un texte de plusieurs lignes";
    expect_reasons({
        {begun + "0,session,titre,\"a\nb\"\n", "4" + lines},
        {begun + "0,session,titre,\"a\rb\"\n", "4" + lines},
        {block + "10,session,fin,\"a\nbilan: bonnes=9\"\n", "10" + lines},
    });
}

TEST(BrokenRecordings, IncidentsAreNumberedAndCountsGrow) {
    const std::string count = ": un compte ne fait que monter";
    expect_reasons({
        {block + "10,incident,2,x\n", "10: l'incident 1 est attendu"},
        {block + "10,incident,1,x\n10,incident,1,x\n", "11: l'incident 2 est attendu"},
        {block + "10,incident,0,x\n", "10: \"0\" n'est pas le numéro d'un incident"},
        {block + "10,incident,,x\n", "10: \"\" n'est pas le numéro d'un incident"},
        {block + "10,incident,01,x\n", "10: \"01\" n'est pas le numéro d'un incident"},
        {block + "10,session,bonnes,0\n", "10" + count},
        {block + "10,session,bonnes,-1\n", "10" + count},
        {block + "10,session,bonnes,01\n", "10" + count},
        {block + "10,session,bonnes,beaucoup\n", "10" + count},
        {block + "10,session,bonnes,2\n20,session,bonnes,1\n", "11" + count},
        {block + "10,session,mauvaises,2\n20,session,mauvaises,2\n", "11" + count},
        {block + "10,session,bonnes,2147483648\n",
         "10: \"2147483648\" n'est pas un entier de 32 bits"},
        {block + "10,session,graine,2\n", "10: \"graine\" n'est pas un compte"},
        {block + "10,session,format,1\n", "10: \"format\" n'est pas un compte"},
        {block + "10,session,,1\n", "10: un nom manque"},
        {block + "10,session,fin,\n", "10: une valeur manque"},
        {block + "10,exercice,but,\n", "10: une valeur manque"},
        {block + "10,exercice,,1\n", "10: un nom manque"},
    });
}

TEST(BrokenRecordings, ABlockThatNeverEndsIsRefused) {
    std::string endless = begun;
    for (int i = 0; i < 1500; ++i) endless += "0,entree,s" + std::to_string(i) + ",0\n";
    EXPECT_EQ(verdict(endless), "f: ligne 1002: un premier bloc de plus de 1000 lignes");
}

TEST(BrokenRecordings, WhatSessionsWriteIsRead) {
    const struct {
        std::string bytes, events;
    } cases[] = {
        {block + "10,session,fin,panneau fermé\n", "9 whole"},
        {block + "0,session,fin,x\n", "9 whole"},
        {block, "8 cut"},
        {block + "10,entree,s1,0", "8 cut"},
        {block + "10,entree,s1,0\n", "9 cut"},
        {block + "10,session,fin,\"panneau, fermé", "8 cut"},
        {begun + "0,entree,a,5\n0,sortie,b,-7\n3,entree,a,6\n3,sortie,b,0\n4,session,fin,x\n",
         "7 whole"},
        {begun + "0,session,titre,\"a,b\"\n0,session,graine,29\n0,entree,a,0\n0,sortie,b,0\n",
         "6 cut"},
        {block + "0,panne,s1,late\n0,pupitre,atu,1\n0,sortie,C1,1\n5,incident,1,x\n10,entree,s1,0\n"
                 "10,session,incidents,1\n10,exercice,but,1\n10,session,fin,x\n",
         "16 whole"},
    };
    for (const auto& [bytes, events] : cases) EXPECT_EQ(verdict(bytes), events) << bytes;
}

}  // namespace
