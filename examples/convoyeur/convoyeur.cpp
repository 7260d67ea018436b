// A station of one's own: a carriage on a conveyor of one metre, with two commands, three sensors
// and the pulses of an encoder. Faults, speed, duration, pause, the panel's process, control by
// scripts, recordings and their replay come with the session.
#include <quorin/recording/recorded_main.h>

#include <algorithm>

namespace {

constexpr std::string_view sensors[] = {"gauche", "milieu", "droite", "codeur"};
constexpr std::string_view commands[] = {"AVANCE", "RECULE"};
constexpr int length_um = 1'000'000, near_um = 10'000, um_per_ms = 100;
constexpr int encoder = 3, pulse_um = 100'000;

class conveyor : public station_model {
public:
    std::string_view name() const override { return "convoyeur"; }
    name_span inputs() const override { return sensors; }
    name_span outputs() const override { return commands; }

    void set_command(int output, std::int32_t value) override {
        if (output == 0) forward_ = value == 1;
        if (output == 1) back_ = value == 1;
    }

    void step(double seconds) override {
        const int ms = static_cast<int>(seconds * 1000 + 0.5);
        now_ms_ += ms;
        incidents_.clear();
        const bool both = forward_ && back_;
        if (both && !both_) incidents_.push_back({now_ms_, "les deux sens à la fois : arrêt"});
        both_ = both;
        place_um_ = std::clamp(place_um_ + (forward_ - back_) * ms * um_per_ms, 0, length_um);
    }

    int sensor(int input) const override {
        if (input == encoder) return place_um_ % pulse_um >= pulse_um / 2;
        if (input < 0 || input > encoder) return 0;
        return std::abs(place_um_ - input * length_um / 2) <= near_um;
    }

    std::span<const station_incident> incidents() const override { return incidents_; }

private:
    bool forward_ = false, back_ = false, both_ = false;
    int place_um_ = 0;
    std::int64_t now_ms_ = 0;
    std::vector<station_incident> incidents_;
};

}  // namespace

int main(int argc, char** argv) {
    const auto make = [] { return std::make_unique<conveyor>(); };
    return recorded_station_main(argc, argv, {"convoyeur", "Un chariot sur un convoyeur"},
                                 {"convoyeur", make, [&](auto) { return make(); }});
}
