<?xml version="1.0" encoding="utf-8"?>
<ProgramFile>
<Program name="Translations" tempo="120" tempoSource="0">
	<MidiInput merge="false">
		<MidiEvent input="255" channel="255" midiEvent="Controller Change,64">
			<Translation condition="D2 ge 64">
				<MidiNoteOn output="1" channel="2" d1="48" d2="D2"/>
			</Translation>
			<Translation condition="D2 ge 64">
				<MidiNoteOn output="1" channel="2" d1="52" d2="D2"/>
			</Translation>
			<Translation condition="D2 ge 64">
				<MidiNoteOn output="1" channel="2" d1="55" d2="D2"/>
			</Translation>
			<Translation condition="D2 lt 64">
				<MidiNoteOff output="1" channel="2" d1="48" d2="64"/>
			</Translation>
			<Translation condition="D2 lt 64">
				<MidiNoteOff output="1" channel="2" d1="52" d2="64"/>
			</Translation>
			<Translation condition="D2 lt 64">
				<MidiNoteOff output="1" channel="2" d1="55" d2="64"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note On,36">
			<Translation condition="Off">
				<MidiNoteOn output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note Off,36">
			<Translation condition="Off">
				<MidiNoteOff output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note On,37">
			<Translation condition="Off">
				<MidiNoteOn output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note Off,37">
			<Translation condition="Off">
				<MidiNoteOff output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note On,38">
			<Translation condition="Off">
				<MidiNoteOn output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note Off,38">
			<Translation condition="Off">
				<MidiNoteOff output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note On,39">
			<Translation condition="Off">
				<MidiNoteOn output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note Off,39">
			<Translation condition="Off">
				<MidiNoteOff output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note On,40">
			<Translation condition="Off">
				<MidiNoteOn output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note Off,40">
			<Translation condition="Off">
				<MidiNoteOff output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note On,41">
			<Translation condition="Off">
				<MidiNoteOn output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note Off,41">
			<Translation condition="Off">
				<MidiNoteOff output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note On,42">
			<Translation condition="Off">
				<MidiNoteOn output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note Off,42">
			<Translation condition="Off">
				<MidiNoteOff output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note On,43">
			<Translation condition="Off">
				<MidiNoteOn output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note Off,43">
			<Translation condition="Off">
				<MidiNoteOff output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note On,44">
			<Translation condition="Off">
				<MidiNoteOn output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note Off,44">
			<Translation condition="Off">
				<MidiNoteOff output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note On,45">
			<Translation condition="Off">
				<MidiNoteOn output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note Off,45">
			<Translation condition="Off">
				<MidiNoteOff output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note On,46">
			<Translation condition="Off">
				<MidiNoteOn output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note Off,46">
			<Translation condition="Off">
				<MidiNoteOff output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note On,47">
			<Translation condition="Off">
				<MidiNoteOn output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note Off,47">
			<Translation condition="Off">
				<MidiNoteOff output="1" channel="5" d1="D1 +12" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Note On,72">
			<Translation condition="Off">
				<Unchanged d1="D1" d2="D2"/>
			</Translation>
			<Translation condition="D2 gt 100">
				<MidiNoteOn d1="D1 +12" d2="D2 -50"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Controller Change,20">
			<Translation condition="Off">
				<ChangeTempo value="D2 +60"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Controller Change,21">
			<Translation condition="Off">
				<ChangeTempo value="D2 -127"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="1" channel="255" midiEvent="Pitch Bend">
			<Translation condition="Off">
				<MidiControllerChange channel="unchanged" d1="1" d2="D2"/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Pitch Bend">
			<Translation condition="Off">
				<DoNothing/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Key Pressure">
			<Translation condition="D2 ne 0">
				<MidiChannelPressure channel="9" d1="D2 +1" d2=""/>
			</Translation>
		</MidiEvent>
		<MidiEvent input="255" channel="255" midiEvent="Program Change">
			<Translation condition="D1 le 1">
				<SelectZone type="D1"/>
			</Translation>
		</MidiEvent>
	</MidiInput>
</Program>
</ProgramFile>
