// The same notes through the MIDI router of FluidSynth, as a yardstick: rules that all match, with a sink behind.
#ifdef TEMBREL_FLUIDSYNTH
#include "BenchPlayer.h"
#include "Notes.h"

#include <benchmark/benchmark.h>
#include <fluidsynth.h>

namespace {

struct Sink {
    Fingerprint fingerprint;
};
int receive(void* data, fluid_midi_event_t* event) {
    static_cast<Sink*>(data)->fingerprint.add(static_cast<std::uint32_t>(fluid_midi_event_get_type(event)) |
                                              static_cast<std::uint32_t>(fluid_midi_event_get_channel(event)) |
                                              static_cast<std::uint32_t>(fluid_midi_event_get_key(event)) << 8 |
                                              static_cast<std::uint32_t>(fluid_midi_event_get_velocity(event)) << 16);
    return FLUID_OK;
}

void fluidRouter(benchmark::State& state) {
    Sink sink;
    fluid_settings_t* settings = new_fluid_settings();
    fluid_midi_router_t* router = new_fluid_midi_router(settings, receive, &sink);
    fluid_midi_router_clear_rules(router);
    for (int i = 0; i < state.range(0); ++i) {
        fluid_midi_router_rule_t* rule = new_fluid_midi_router_rule();
        fluid_midi_router_rule_set_chan(rule, 0, 15, 0.0F, i);
        fluid_midi_router_add_rule(router, rule, FLUID_MIDI_ROUTER_RULE_NOTE);
    }
    fluid_midi_event_t* event = new_fluid_midi_event();
    const auto play = [&](std::uint32_t i) {
        const BenchNote note = benchNote(i);
        fluid_midi_event_set_type(event, note.on ? 0x90 : 0x80);
        fluid_midi_event_set_channel(event, 0);
        fluid_midi_event_set_key(event, note.key);
        fluid_midi_event_set_velocity(event, note.velocity);
        fluid_midi_router_handle_midi_event(router, event);
    };
    for (std::uint32_t i = 0; i < 100'000; ++i) {
        play(i);
    }
    state.SetLabel(sink.fingerprint.text());
    std::uint32_t i = 0;
    for (auto _ : state) {
        play(i++);
    }
    state.SetItemsProcessed(state.iterations());
    delete_fluid_midi_event(event);
    delete_fluid_midi_router(router);
    delete_fluid_settings(settings);
}
BENCHMARK(fluidRouter)->ArgName("rules")->Arg(1)->Arg(8);

} // namespace
#endif
