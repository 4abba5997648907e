<?xml version="1.0" encoding="utf-8"?>
<ProgramFile>
<Program name="Gate" tempo="120" tempoSource="0">
	<Oscillators merge="false">
		<Oscillator type="pulse" speed="100" midiMessage="Controller Change,11" output="0" channel="0"/>
	</Oscillators>
</Program>
</ProgramFile>
