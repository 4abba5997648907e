<?xml version="1.0" encoding="utf-8"?>
<ProgramFile>
<Program name="Oscillators" tempo="120" tempoSource="0">
	<Oscillators merge="false">
		<Oscillator type="sin" speed="240" min="64" max="127" speedMode="ppq" stopValue="100" detail="8" midiMessage="Controller Change,7"/>
		<Oscillator type="tri" speed="360" min="110" max="20" speedMode="time" detail="10" midiMessage="Controller Change,74" output="0" channel="3"/>
		<Oscillator type="pulse" speed="120" min="0" max="127" speedMode="ppq" stopValue="127" midiMessage="Controller Change,11"/>
		<Oscillator type="random" speed="60" min="40" max="90" midiMessage="Channel Pressure" channel="5"/>
		<Oscillator type="saw" speed="480" min="0" max="16383" detail="40" stopValue="8192" midiMessage="Pitch Bend"/>
	</Oscillators>
	<Layers merge="false">
		<Layer maxNote="B3" channel="0"/>
		<Layer minNote="C4" channel="1"/>
	</Layers>
</Program>
</ProgramFile>
