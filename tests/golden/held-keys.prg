<?xml version="1.0" encoding="utf-8"?>
<ProgramFile>
	<Program name="Held keys" tempo="120" tempoSource="0">
		<ComputerInput merge="false" useKeyUpMod="false">
			<Key id="Q">
				<Function keepSending="false">
					<Down>
						<MidiNoteOn zone="0" note="C4" velocity="100"/>
					</Down>
					<Up>
						<MidiNoteOff zone="0" note="C4" velocity="64"/>
					</Up>
				</Function>
			</Key>
			<Key id="Shift Q">
				<Function keepSending="false">
					<Down>
						<MidiNoteOn zone="0" note="D4" velocity="100"/>
					</Down>
					<Up>
						<MidiControllerChange controller="2" value="2"/>
					</Up>
				</Function>
			</Key>
			<Key id="W">
				<Function keepSending="false">
					<Down>
						<MidiNoteOn zone="0" note="C4" velocity="90"/>
					</Down>
					<Up>
						<MidiNoteOff zone="0" note="C4" velocity="63"/>
					</Up>
				</Function>
			</Key>
			<Key id="Shift E">
				<Function keepSending="false">
					<Down>
						<MidiNoteOn zone="0" note="E4" velocity="80"/>
					</Down>
					<Up>
						<MidiNoteOff zone="0" note="E4" velocity="62"/>
					</Up>
				</Function>
			</Key>
			<Key id="R">
				<Function keepSending="false">
					<Down>
						<MidiNoteOn channel="3" note="F4" velocity="70"/>
					</Down>
					<Up>
						<MidiNoteOff channel="3" note="F4" velocity="61"/>
					</Up>
				</Function>
			</Key>
			<Key id="T">
				<Function keepSending="false">
					<Down>
						<MidiNoteOn channel="3" note="F4" velocity="71"/>
					</Down>
					<Up>
						<MidiNoteOff channel="3" note="F4" velocity="60"/>
					</Up>
				</Function>
			</Key>
			<Key id="Y">
				<Function keepSending="true">
					<Down>
						<MidiControllerChange controller="1" value="5"/>
					</Down>
				</Function>
				<Function keepSending="false">
					<Down>
						<MidiControllerChange controller="1" value="6"/>
					</Down>
				</Function>
				<Function keepSending="true">
					<Up>
						<MidiControllerChange controller="1" value="7"/>
					</Up>
				</Function>
			</Key>
			<Key id="U">
				<Function keepSending="true">
					<Down>
						<MidiNoteOn note="G4" velocity="50"/>
					</Down>
					<Up>
						<MidiNoteOff note="G4" velocity="59"/>
					</Up>
				</Function>
			</Key>
			<Key id="F2">
				<Function>
					<Down>
						<ChangeZoneTranspose type="selected" value="+12"/>
					</Down>
				</Function>
			</Key>
			<Key id="F3">
				<Function>
					<Down>
						<LoadComputerInputPreset preset="000 - Default"/>
					</Down>
				</Function>
			</Key>
		</ComputerInput>
		<Zones merge="false">
			<Zone id="0" transpose="0"/>
			<Zone id="1" transpose="0"/>
		</Zones>
	</Program>
</ProgramFile>
