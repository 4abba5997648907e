// The sounds of General MIDI level 1, by program number from 0, and their families of eight.
#pragma once

#include <array>

namespace Desktop {

constexpr std::array<const char*, 16> generalMidiFamilies{"Piano",         "Chromatic percussion",
                                                          "Organ",         "Guitar",
                                                          "Bass",          "Strings",
                                                          "Ensemble",      "Brass",
                                                          "Reed",          "Pipe",
                                                          "Synth lead",    "Synth pad",
                                                          "Synth effects", "Ethnic",
                                                          "Percussive",    "Sound effects"};

// clang-format off
constexpr std::array<const char*, 128> generalMidiSounds{
    "Acoustic grand piano", "Bright acoustic piano", "Electric grand piano", "Honky-tonk piano",
    "Electric piano 1", "Electric piano 2", "Harpsichord", "Clavinet",
    "Celesta", "Glockenspiel", "Music box", "Vibraphone",
    "Marimba", "Xylophone", "Tubular bells", "Dulcimer",
    "Drawbar organ", "Percussive organ", "Rock organ", "Church organ",
    "Reed organ", "Accordion", "Harmonica", "Tango accordion",
    "Nylon guitar", "Steel guitar", "Jazz guitar", "Clean guitar",
    "Muted guitar", "Overdriven guitar", "Distortion guitar", "Guitar harmonics",
    "Acoustic bass", "Fingered bass", "Picked bass", "Fretless bass",
    "Slap bass 1", "Slap bass 2", "Synth bass 1", "Synth bass 2",
    "Violin", "Viola", "Cello", "Contrabass",
    "Tremolo strings", "Pizzicato strings", "Orchestral harp", "Timpani",
    "String ensemble 1", "String ensemble 2", "Synth strings 1", "Synth strings 2",
    "Choir aahs", "Voice oohs", "Synth voice", "Orchestra hit",
    "Trumpet", "Trombone", "Tuba", "Muted trumpet",
    "French horn", "Brass section", "Synth brass 1", "Synth brass 2",
    "Soprano sax", "Alto sax", "Tenor sax", "Baritone sax",
    "Oboe", "English horn", "Bassoon", "Clarinet",
    "Piccolo", "Flute", "Recorder", "Pan flute",
    "Blown bottle", "Shakuhachi", "Whistle", "Ocarina",
    "Square lead", "Sawtooth lead", "Calliope lead", "Chiff lead",
    "Charang lead", "Voice lead", "Fifths lead", "Bass and lead",
    "New age pad", "Warm pad", "Polysynth pad", "Choir pad",
    "Bowed pad", "Metallic pad", "Halo pad", "Sweep pad",
    "Rain", "Soundtrack", "Crystal", "Atmosphere",
    "Brightness", "Goblins", "Echoes", "Sci-fi",
    "Sitar", "Banjo", "Shamisen", "Koto",
    "Kalimba", "Bagpipe", "Fiddle", "Shanai",
    "Tinkle bell", "Agogo", "Steel drums", "Woodblock",
    "Taiko drum", "Melodic tom", "Synth drum", "Reverse cymbal",
    "Guitar fret noise", "Breath noise", "Seashore", "Bird tweet",
    "Telephone ring", "Helicopter", "Applause", "Gunshot"};
// clang-format on

} // namespace Desktop
