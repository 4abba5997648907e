<?xml version="1.0" encoding="utf-8"?>
<ProgramFile>
<Program name="arpeggio-kinds" tempo="120" tempoSource="0">
	<Layers merge="false">
		<Layer channel="0"><Arpeggio><ChordArpeggio beat="240" length="150"/></Arpeggio></Layer>
		<Layer channel="1"><Arpeggio><UpArpeggio beat="240" length="240"/></Arpeggio></Layer>
		<Layer channel="2"><Arpeggio><DownArpeggio beat="240" length="150"/></Arpeggio></Layer>
		<Layer channel="3"><Arpeggio><UpDownArpeggio beat="240" length="240"/></Arpeggio></Layer>
		<Layer channel="4"><Arpeggio><ChordArpeggio beat="240" length="150"/></Arpeggio><SequenceSetting preset="013 - 5th Oct Up"/></Layer>
		<Layer channel="5"><Arpeggio><UpArpeggio beat="240" length="240"/></Arpeggio><SequenceSetting preset="013 - 5th Oct Up"/></Layer>
		<Layer channel="6"><Arpeggio><DownArpeggio beat="240" length="150"/></Arpeggio><SequenceSetting preset="013 - 5th Oct Up"/></Layer>
		<Layer channel="7"><Arpeggio><UpDownArpeggio beat="240" length="240"/></Arpeggio><SequenceSetting preset="013 - 5th Oct Up"/></Layer>
		<Layer channel="8"><Arpeggio><ChordArpeggio beat="240" length="150"/></Arpeggio><SequenceSetting preset="048 - Gate 4" useNote="false"/></Layer>
		<Layer channel="9"><Arpeggio><UpArpeggio beat="240" length="240"/></Arpeggio><SequenceSetting preset="048 - Gate 4" useNote="false"/></Layer>
		<Layer channel="10"><Arpeggio><DownArpeggio beat="240" length="150"/></Arpeggio><SequenceSetting preset="048 - Gate 4" useNote="false"/></Layer>
		<Layer channel="11"><Arpeggio><UpDownArpeggio beat="240" length="240"/></Arpeggio><SequenceSetting preset="048 - Gate 4" useNote="false"/></Layer>
	</Layers>
</Program>
</ProgramFile>
