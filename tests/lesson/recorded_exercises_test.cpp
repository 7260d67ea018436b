// The bundled exercises on recordings of sessions: one of each in which everything is right, and
// three in which something is not, each for a reason that the verdict tells. tests/lesson/record
// makes them again.
#include <gtest/gtest.h>

#include <algorithm>

#include "lesson/bundled_exercises.h"
#include "lesson/exercise_file.h"
#include "lesson/exercise_text.h"
#include "lesson/verdict.h"
#include "programs/quorin_lesson/marking.h"
#include "tests/support/files.h"
#include "workcell/workcell_model.h"

namespace {

namespace fs = std::filesystem;

const fs::path folder = QUORIN_SOURCE "/tests/lesson";

exercise bundled(const std::string& name) {
    return read_exercise_file(bundled_exercise_file(name), workcell_model(0));
}

/// A recording that is not passed: its points, and what the verdict must say of it.
struct wrong_row {
    std::string exercise, recording;
    std::int64_t points;
    std::vector<std::string> told;
};

// clang-format off
const wrong_row wrong[] = {
    {"01_premiere_commande", "sort_reste_a_1", 1,
     {"But 2, SORT est revenue à 0, et le tiroir reste sorti : pas atteint ; à la fin, à 31.600 s, il manquait SORT=0 depuis 0.810 s.",
      "Indice, à 16.590 s : SORT est restée à 1, le tiroir sorti : il faut un second clic pour la remettre à 0."}},
    {"01_premiere_commande", "les_deux_ensemble", 3,
     {"Jamais 1, SORT et RENT sont à 1 ensemble : c'est arrivé à 2.410 s, moins 1 point."}},
    {"01_premiere_commande", "tiroir_laisse_dehors", 2,
     {"But 3, le tiroir est rentré, et RENT est revenue à 0 : pas atteint ; à la fin, à 12.400 s, il manquait te=1 depuis 0.820 s."}},
    {"02_bloqueurs", "mauvais_bloqueur", 2,
     {"But 2, le bloqueur 2 est rentré, les deux autres sont sortis : pas atteint ; à la fin, à 14.800 s, il manquait b1s=1 depuis 6.510 s, b2e=1 depuis 1.610 s.",
      "Indice, à 11.800 s : le bloqueur 1 est rentré, les deux autres sont sortis : celui du milieu est le 2."}},
    {"02_bloqueurs", "tapis_en_marche", 4,
     {"Jamais 1, le tapis principal marche : c'est arrivé à 0.810 s, moins 1 point."}},
    {"02_bloqueurs", "trop_tard", 3,
     {"But 2, le bloqueur 2 est rentré, les deux autres sont sortis : atteint trop tard, à 76.800 s ; la limite était à 64.700 s."}},
    {"03_coller_un_support", "colle_trop_tot", 4,
     {"Jamais 1, la colle coule sans support en zone 1 : c'est arrivé à 3.510 s, moins 3 points."}},
    {"03_coller_un_support", "bloqueur_oublie", 0,
     {"But 1, le bloqueur 1 est sorti : pas atteint ; à la fin, à 31.600 s, il manquait b1s=1 depuis 0.000 s.",
      "Indice, à 4.610 s : le support était en zone 1, et le bloqueur 1 n'était pas sorti : rien ne l'y retenait."}},
    {"03_coller_un_support", "colle_non_fermee", 5,
     {"But 4, la colle est arrêtée : atteint trop tard, à 30.160 s ; la limite était à 24.350 s."}},
    {"04_poser_une_piece", "piece_lachee_en_haut", 3,
     {"Jamais 1, la ventouse lâche la pièce sans être en bas : c'est arrivé à 22.760 s, moins 3 points.",
      "But 4, la ventouse est descendue sur le support avec la pièce : pas atteint ; à la fin, à 27.850 s, il manquait vide=1 depuis 22.850 s, vb=1 depuis 18.170 s."}},
    {"04_poser_une_piece", "tiroir_bloque", 11,
     {"Jamais 2, le tiroir est commandé alors que la ventouse est en bas : c'est arrivé à 17.360 s, moins 1 point."}},
    {"04_poser_une_piece", "sans_aspirer", 2,
     {"But 2, la ventouse tient la pièce au-dessus du tiroir sorti : pas atteint ; à la fin, à 23.500 s, il manquait vide=1 depuis 0.000 s.",
      "Indice, à 21.510 s : ASPI était à 1 sans que la ventouse soit en bas, sur la pièce : pas de vide."}},
    {"05_un_bon_support", "sans_colle", 0,
     {"But 1, le support est collé en zone 1 : pas atteint ; à la fin, à 54.600 s, il manquait p1ok=1 depuis 9.060 s, colle=1 depuis 0.000 s.",
      "Indice, à 8.860 s : le support a quitté la zone 1 sans colle : attendez colle avant de rentrer le bloqueur 1.",
      "Bilan 1, un bon support : à la fin, à 54.600 s, bonnes=0 ; il fallait au moins 1."}},
    {"05_un_bon_support", "colle_jusqu_au_depart", 13,
     {"Jamais 1, la colle coule sans support en zone 1 : c'est arrivé à 10.560 s, moins 2 points."}},
    {"05_un_bon_support", "presse_trop_courte", 6,
     {"But 4, la presse a tenu le support pendant dix secondes : pas atteint ; à la fin, à 53.200 s, il manquait p3ok=1 depuis 47.310 s, timer10_term=1 depuis 0.000 s.",
      "Indice, à 44.510 s : la presse remontait avant la fin des dix secondes : attendez timer10_term."}},
    {"06_trois_bons_supports", "deux_a_la_fois", 14,
     {"Bilan 2, aucun mauvais support : à la fin, à 191.950 s, mauvaises=1 ; il fallait au plus 0.",
      "Indice, à 10.450 s : MTA était encore à 1 quand le support est arrivé en zone 1 : un autre a pu le suivre."}},
    {"06_trois_bons_supports", "deux_seulement", 10,
     {"Bilan 1, trois bons supports : à la fin, à 121.300 s, bonnes=2 ; il fallait au moins 3."}},
    {"06_trois_bons_supports", "presse_sur_rien", 16,
     {"Jamais 2, la presse descend sans support en zone 3 : c'est arrivé à 0.810 s, moins 2 points."}},
    {"07_arret_urgence", "arret_trop_tard", 2,
     {"But 2, arrêt d'urgence pendant la descente de la presse : pas atteint ; à la fin, à 43.950 s, il manquait atu=1 depuis 21.210 s, ph=0 depuis 43.130 s.",
      "Indice, à 18.410 s : l'arrêt d'urgence est venu trop tard : la presse était déjà en bas."}},
    {"07_arret_urgence", "deverrouille_trop_tot", 5,
     {"But 3, DESP est revenue à 0 pendant l'arrêt d'urgence : pas atteint ; à la fin, à 44.100 s, il manquait atu=1 depuis 16.560 s, ph=0 depuis 43.280 s."}},
    {"07_arret_urgence", "monp_pendant_l_arret", 5,
     {"Jamais 1, MONP est donnée pendant l'arrêt d'urgence : la presse repartirait toute seule : c'est arrivé à 18.160 s, moins 2 points."}},
    {"08_cadence", "trop_lent", 11,
     {"Bilan 3, la cadence : trois bons supports en cinq minutes : à la fin, à 300.000 s, bonnes=2 ; il fallait au moins 3.",
      "Indice, à 91.180 s : un support pressé est resté 10 s de plus sous la presse : timer10_term le disait."}},
    {"08_cadence", "colle_essayee_a_vide", 9,
     {"Jamais 1, la colle coule sans support en zone 1 : c'est arrivé à 0.810 s, moins 2 points.",
      "Bilan 5, aucun incident : à la fin, à 300.000 s, incidents=1 ; il fallait au plus 0."}},
    {"08_cadence", "un_support_sans_colle", 12,
     {"Bilan 4, aucun mauvais support : à la fin, à 300.000 s, mauvaises=1 ; il fallait au plus 0."}},
    {"09_capteur_bloque", "actionneur_accuse", 7,
     {"Diagnostic : DESV=dead, faux, répondu à 33.410 s ; il fallait vb=stuck0."}},
    {"09_capteur_bloque", "mauvaise_valeur", 7,
     {"Diagnostic : vb=stuck1, faux, répondu à 33.410 s ; il fallait vb=stuck0."}},
    {"09_capteur_bloque", "sans_reponse", 7,
     {"Diagnostic : pas de réponse jusqu'à la fin, à 33.400 s ; il fallait vb=stuck0."}},
    {"10_deux_pannes", "une_panne_sur_deux", 4,
     {"Diagnostic : ts=late, faux, répondu à 43.410 s ; il fallait ts=late BZ2=slow."}},
    {"10_deux_pannes", "capteur_au_lieu_du_bloqueur", 4,
     {"Diagnostic : b2s=late ts=late, faux, répondu à 43.410 s ; il fallait ts=late BZ2=slow."}},
    {"10_deux_pannes", "tiroir_au_lieu_du_capteur", 4,
     {"Diagnostic : BZ2=slow SORT=slow, faux, répondu à 43.410 s ; il fallait ts=late BZ2=slow."}},
};
// clang-format on

std::string sentences(const exercise& task, const exercise_standing& standing) {
    std::string text;
    for (const verdict_sentence& each : verdict_sentences(task, standing, language::french))
        text += each.text + "\n";
    return text;
}

fs::path recording_of(const std::string& exercise, const std::string& name) {
    return folder / exercise / (name + ".csv");
}

TEST(RecordedExercises, TheReferenceIsPassedWithAllPoints) {
    const std::vector<std::string> names = bundled_exercise_names();
    EXPECT_EQ(names.size(), 10u);
    for (const std::string& name : names) {
        const exercise task = bundled(name);
        const marked_recording found = mark_recording(task, recording_of(name, "reference"));
        ASSERT_TRUE(found.standing) << found.refusal;
        const std::string told = sentences(task, *found.standing);
        EXPECT_TRUE(found.passed()) << name << "\n" << told;
        EXPECT_EQ(found.standing->points, total_points(task)) << name << "\n" << told;
    }
}

TEST(RecordedExercises, AWrongOneIsNotPassedAndTheVerdictSaysWhy) {
    for (const wrong_row& row : wrong) {
        const exercise task = bundled(row.exercise);
        const marked_recording found =
            mark_recording(task, recording_of(row.exercise, row.recording));
        ASSERT_TRUE(found.standing) << found.refusal;
        const std::string told = sentences(task, *found.standing);
        EXPECT_FALSE(found.passed()) << row.exercise << " " << row.recording;
        EXPECT_EQ(found.standing->points, row.points) << row.exercise << " " << row.recording;
        for (const std::string& each : row.told)
            EXPECT_NE(told.find("\n" + each + "\n"), std::string::npos)
                << row.exercise << " " << row.recording << ": " << each << "\n"
                << told;
    }
}

TEST(RecordedExercises, EachHasItsReferenceAndThreeWrongOnesAndNoOther) {
    for (const std::string& name : bundled_exercise_names()) {
        std::vector<std::string> listed = {"reference"}, found;
        for (const wrong_row& row : wrong)
            if (row.exercise == name) listed.push_back(row.recording);
        for (const auto& each : fs::directory_iterator(folder / name))
            found.push_back(each.path().stem());
        std::ranges::sort(listed);
        std::ranges::sort(found);
        EXPECT_EQ(found, listed) << name;
        EXPECT_GE(listed.size(), 4u) << name;
    }
}

TEST(RecordedExercises, TheyWereMadeWithTheFilesThatAreThere) {
    for (const std::string& name : bundled_exercise_names())
        for (const auto& each : fs::directory_iterator(folder / name))
            EXPECT_NE(
                bytes_of(each.path()).find("\n0,exercice,empreinte," + bundled(name).digest + "\n"),
                std::string::npos)
                << each.path();
}

// What is to be found out is read in the sources alone.
TEST(HiddenBundledExercises, AreTheHiddenCopiesOfTheirSources) {
    std::vector<std::string> with_sources;
    for (const auto& each : fs::directory_iterator(folder / "sources")) {
        const std::string name = each.path().stem();
        with_sources.push_back(name);
        const exercise source = read_exercise_file(each.path(), workcell_model(0));
        EXPECT_FALSE(source.station.hidden_faults.empty()) << name;
        EXPECT_EQ(bytes_of(bundled_exercise_file(name)), hidden_exercise_text(source)) << name;
    }
    for (const std::string& name : bundled_exercise_names()) {
        const std::string text = bytes_of(bundled_exercise_file(name));
        EXPECT_EQ(text.find("pannes_cachees"), std::string::npos) << name;
        EXPECT_EQ(text.find("[diagnostic]"), std::string::npos) << name;
        EXPECT_EQ(bundled(name).diagnosis.has_value(), std::ranges::count(with_sources, name) == 1)
            << name;
    }
    EXPECT_EQ(with_sources.size(), 2u);
}

}  // namespace
