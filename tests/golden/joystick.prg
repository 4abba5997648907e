<?xml version="1.0" encoding="utf-8"?>
<ProgramFile>
	<Program name="Joystick" tempo="120" tempoSource="0">
		<Joystick merge="false">
			<Axis joystick="0" axis="X">
				<Function midiEvent="Pitch Bend" output="-1" channel="-1" zone="-1" min="0" max="16383" offset="0"/>
				<Function midiEvent="Controller Change,10" output="-1" channel="-1" zone="-1" min="127" max="0" offset="0"/>
			</Axis>
			<Axis joystick="0" axis="Y">
				<Function midiEvent="Controller Change,1" output="1" channel="2" zone="-1" min="0" max="127" offset="0"/>
			</Axis>
			<Axis joystick="0" axis="U">
				<Function midiEvent="Program Change" min="0" max="7"/>
			</Axis>
			<Axis joystick="1" axis="V">
				<Function midiEvent="Channel Pressure" min="-20" max="107" offset="30"/>
			</Axis>
			<Button joystick="0" button="0">
				<Function keepSending="false">
					<Down>
						<MidiNoteOn note="C4" velocity="100"/>
					</Down>
					<Up>
						<MidiNoteOff note="C4" velocity="100"/>
					</Up>
				</Function>
			</Button>
			<Button joystick="1" button="31">
				<Function keepSending="true">
					<Down>
						<ChangeControl type="0,1" value="+10"/>
					</Down>
				</Function>
				<Function keepSending="false">
					<Up>
						<SendControlData type="0,2"/>
					</Up>
				</Function>
			</Button>
		</Joystick>
	</Program>
</ProgramFile>
