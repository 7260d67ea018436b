#include "session/system_errors.h"

#include <algorithm>
#include <cerrno>
#include <string_view>

#include "session/failure.h"

namespace {

struct error_row {
    int number;
    std::string_view words;
};

// clang-format off
constexpr error_row rows[] = {
    {EPERM,        "opération interdite"},
    {ENOENT,       "fichier ou dossier introuvable"},
    {EIO,          "erreur d'entrée-sortie"},
    {ENXIO,        "personne ne lit à l'autre bout"},
    {E2BIG,        "ligne de commande trop longue"},
    {ENOEXEC,      "ce n'est pas un programme"},
    {EAGAIN,       "ressource indisponible pour le moment"},
    {ENOMEM,       "mémoire insuffisante"},
    {EACCES,       "accès refusé"},
    {EBUSY,        "occupé"},
    {EEXIST,       "existe déjà"},
    {ENODEV,       "périphérique absent"},
    {ENOTDIR,      "un élément du chemin n'est pas un dossier"},
    {EISDIR,       "c'est un dossier"},
    {EINVAL,       "demande que le système ne permet pas"},
    {ENFILE,       "trop de fichiers ouverts sur la machine"},
    {EMFILE,       "trop de fichiers ouverts"},
    {ETXTBSY,      "programme en cours d'utilisation"},
    {EFBIG,        "fichier trop grand"},
    {ENOSPC,       "plus de place sur le disque"},
    {ESPIPE,       "ce n'est pas un fichier ordinaire"},
    {EROFS,        "système de fichiers en lecture seule"},
    {EPIPE,        "plus personne ne lit"},
    {ENAMETOOLONG, "nom trop long"},
    {ELOOP,        "trop de liens symboliques"},
    {EADDRINUSE,   "adresse déjà prise"},
    {EDQUOT,       "quota de disque atteint"},
};
// clang-format on

}  // namespace

std::string system_error_words(int number) {
    const auto row = std::ranges::find(rows, number, &error_row::number);
    return row != std::end(rows) ? std::string(row->words) : "erreur " + std::to_string(number);
}

int or_refuse(int result, const std::string& doing) {
    if (result < 0) throw refusal(doing + ": " + system_error_words(errno));
    return result;
}
