// Sessions of zk4sim with an exercise of a few lines.
#pragma once
#include "tests/end_to_end/zk4sim_session.h"

inline const std::string task_begin =
    "format = 1\ntitre = \"La butée\"\ntitre_en = \"The stop\"\n"
    "enonce = \"\"\"\nSortez la butée 1.\n\"\"\"\n";
inline const std::string goal =
    "[[but]]\ntexte = \"la butée 1 est sortie\"\nquand = [\"BZ1=1\", \"b1s=1\"]\n"
    "tenir_s = 0.5\navant_s = 6000\npoints = 2\n";
inline const std::string ban =
    "[[jamais]]\ntexte = \"la presse descend\"\nquand = [\"DESP=1\"]\nmoins = 1\n";
inline const std::string hidden =
    "[station]\ngraine = 7\nbases = 3\npannes = [\"te=late\"]\n"
    "pannes_cachees = [\"vb=stuck1\"]\n";
inline const std::string diagnosis = "[diagnostic]\npannes = [\"vb=stuck1\"]\npoints = 5\n";

class Zk4simExercise : public Zk4sim {
protected:
    std::string file(const std::string& name) const { return files / name; }
    /// An exercise in a file of that name.
    std::string task(const std::string& text, const std::string& name = "a.toml") const {
        write_bytes(file(name), task_begin + text);
        return file(name);
    }
    outcome run_task(const std::string& exercise, std::vector<std::string> options) const {
        options.insert(options.begin(), {"--exercise", exercise, "--speed", "50"});
        return run_zk4sim(options);
    }
    outcome mark(const std::string& exercise, const std::string& recording) const {
        return run_program({built("quorin-lesson"), "mark", exercise, recording});
    }
    void expect_it_comes_again(const std::string& recording) const {
        const outcome again =
            run_zk4sim({"--play", recording, "--headless", "--csv", file("again.csv")});
        EXPECT_EQ(again.status, 0) << again.err;
        EXPECT_EQ(bytes_of(file("again.csv")), bytes_of(recording));
    }

    const std::string io = built("quorin-io") + " ";
    const temporary_folder files;
};
