<?xml version="1.0" encoding="utf-8"?>
<ProgramFile>
<Program name="sequence-presets" tempo="120" tempoSource="0">
	<Layers merge="false">
		<Layer output="0" channel="0"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="001 - Oct 1 Up"/></Layer>
		<Layer output="0" channel="1"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="002 - Oct 2 Up"/></Layer>
		<Layer output="0" channel="2"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="003 - Oct 3 Up"/></Layer>
		<Layer output="0" channel="3"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="004 - Oct 1 Down"/></Layer>
		<Layer output="0" channel="4"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="005 - Oct 2 Down"/></Layer>
		<Layer output="0" channel="5"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="006 - Oct 3 Down"/></Layer>
		<Layer output="0" channel="6"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="007 - Oct 2 Up-Down"/></Layer>
		<Layer output="0" channel="7"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="008 - Oct 3 Up-Down"/></Layer>
		<Layer output="0" channel="8"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="009 - Oct 2 Down-Up"/></Layer>
		<Layer output="0" channel="9"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="010 - Oct 3 Down-Up"/></Layer>
		<Layer output="0" channel="10"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="011 - 5th Up"/></Layer>
		<Layer output="0" channel="11"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="012 - 5th Down"/></Layer>
		<Layer output="0" channel="12"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="013 - 5th Oct Up"/></Layer>
		<Layer output="0" channel="13"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="014 - 5th Oct Down"/></Layer>
		<Layer output="0" channel="14"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="015 - 5th Oct 5th Up"/></Layer>
		<Layer output="0" channel="15"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="016 - 5th Oct 5th Down"/></Layer>
		<Layer output="1" channel="0"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="017 - 5th Oct Up-Down"/></Layer>
		<Layer output="1" channel="1"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="018 - 5th Oct Down-Up"/></Layer>
		<Layer output="1" channel="2"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="019 - 5th Oct 5th Up-Down"/></Layer>
		<Layer output="1" channel="3"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="020 - 5th Oct 5th Down-Up"/></Layer>
		<Layer output="1" channel="4"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="021 - m2 Up"/></Layer>
		<Layer output="1" channel="5"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="022 - m2 Down"/></Layer>
		<Layer output="1" channel="6"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="023 - Seq 0"/></Layer>
		<Layer output="1" channel="7"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="024 - Seq 1"/></Layer>
		<Layer output="1" channel="8"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="025 - Seq 2"/></Layer>
		<Layer output="1" channel="9"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="026 - Seq 3"/></Layer>
		<Layer output="1" channel="10"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="027 - Seq 4"/></Layer>
		<Layer output="1" channel="11"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="028 - Seq 5"/></Layer>
		<Layer output="1" channel="12"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="029 - Seq 6"/></Layer>
		<Layer output="1" channel="13"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="030 - Seq 7"/></Layer>
		<Layer output="1" channel="14"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="031 - Seq 8"/></Layer>
		<Layer output="1" channel="15"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="032 - Seq 9"/></Layer>
		<Layer output="2" channel="0"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="033 - Seq 10"/></Layer>
		<Layer output="2" channel="1"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="034 - Drums 1"/></Layer>
		<Layer output="2" channel="2"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="035 - Drums 2"/></Layer>
		<Layer output="2" channel="3"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="036 - Drums 3"/></Layer>
		<Layer output="2" channel="4"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="037 - Drums 4"/></Layer>
		<Layer output="2" channel="5"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="038 - Drums 5"/></Layer>
		<Layer output="2" channel="6"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="039 - Drums 6"/></Layer>
		<Layer output="2" channel="7"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="040 - Drums 7"/></Layer>
		<Layer output="2" channel="8"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="041 - Drums 8"/></Layer>
		<Layer output="2" channel="9"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="042 - Drums 9"/></Layer>
		<Layer output="2" channel="10"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="043 - Drums 10"/></Layer>
		<Layer output="2" channel="11"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="044 - Drums 11"/></Layer>
		<Layer output="2" channel="12"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="045 - Gate 1"/></Layer>
		<Layer output="2" channel="13"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="046 - Gate 2"/></Layer>
		<Layer output="2" channel="14"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="047 - Gate 3"/></Layer>
		<Layer output="2" channel="15"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="048 - Gate 4"/></Layer>
		<Layer output="3" channel="0"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="049 - Gate 5"/></Layer>
		<Layer output="3" channel="1"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="050 - Note 1 of 2"/></Layer>
		<Layer output="3" channel="2"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="051 - Note 2 of 2"/></Layer>
		<Layer output="3" channel="3"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="052 - Note 1 of 3"/></Layer>
		<Layer output="3" channel="4"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="053 - Note 2 of 3"/></Layer>
		<Layer output="3" channel="5"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="054 - Note 3 of 3"/></Layer>
		<Layer output="3" channel="6"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="055 - Note 1 of 4"/></Layer>
		<Layer output="3" channel="7"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="056 - Note 2 of 4"/></Layer>
		<Layer output="3" channel="8"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="057 - Note 3 of 4"/></Layer>
		<Layer output="3" channel="9"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="058 - Note 4 of 4"/></Layer>
		<Layer output="3" channel="10"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="059 - Note 1 of 6"/></Layer>
		<Layer output="3" channel="11"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="060 - Note 2 of 6"/></Layer>
		<Layer output="3" channel="12"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="061 - Note 3 of 6"/></Layer>
		<Layer output="3" channel="13"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="062 - Note 4 of 6"/></Layer>
		<Layer output="3" channel="14"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="063 - Note 5 of 6"/></Layer>
		<Layer output="3" channel="15"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="064 - Note 6 of 6"/></Layer>
		<Layer output="4" channel="0"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="065 - Note 1 of 8"/></Layer>
		<Layer output="4" channel="1"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="066 - Note 2 of 8"/></Layer>
		<Layer output="4" channel="2"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="067 - Note 3 of 8"/></Layer>
		<Layer output="4" channel="3"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="068 - Note 4 of 8"/></Layer>
		<Layer output="4" channel="4"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="069 - Note 5 of 8"/></Layer>
		<Layer output="4" channel="5"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="070 - Note 6 of 8"/></Layer>
		<Layer output="4" channel="6"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="071 - Note 7 of 8"/></Layer>
		<Layer output="4" channel="7"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="072 - Note 8 of 8"/></Layer>
		<Layer output="4" channel="8"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="073 - Oct 1 Up (2)"/></Layer>
		<Layer output="4" channel="9"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="074 - Oct 2 Up (2)"/></Layer>
		<Layer output="4" channel="10"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="075 - Oct 3 Up (2)"/></Layer>
		<Layer output="4" channel="11"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="076 - Oct 1 Down (2)"/></Layer>
		<Layer output="4" channel="12"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="077 - Oct 2 Down (2)"/></Layer>
		<Layer output="4" channel="13"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="078 - Oct 3 Down (2)"/></Layer>
		<Layer output="4" channel="14"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="079 - Oct 2 Up-Down (2)"/></Layer>
		<Layer output="4" channel="15"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="080 - Oct 3 Up-Down (2)"/></Layer>
		<Layer output="5" channel="0"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="081 - Oct 2 Down-Up (2)"/></Layer>
		<Layer output="5" channel="1"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="082 - Oct 3 Down-Up (2)"/></Layer>
		<Layer output="5" channel="2"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="083 - 5th Up (2)"/></Layer>
		<Layer output="5" channel="3"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="084 - 5th Down (2)"/></Layer>
		<Layer output="5" channel="4"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="085 - 5th Oct Up (2)"/></Layer>
		<Layer output="5" channel="5"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="086 - 5th Oct Down (2)"/></Layer>
		<Layer output="5" channel="6"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="087 - 5th Oct 5th Up (2)"/></Layer>
		<Layer output="5" channel="7"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="088 - 5th Oct 5th Down (2)"/></Layer>
		<Layer output="5" channel="8"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="089 - 5th Oct Up-Down (2)"/></Layer>
		<Layer output="5" channel="9"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="090 - 5th Oct Down-Up (2)"/></Layer>
		<Layer output="5" channel="10"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="091 - 5th Oct 5th Up-Down (2)"/></Layer>
		<Layer output="5" channel="11"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="092 - 5th Oct 5th Down-Up (2)"/></Layer>
		<Layer output="5" channel="12"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="093 - m2 Up (2)"/></Layer>
		<Layer output="5" channel="13"><Arpeggio><ChordArpeggio beat="120" length="90"/></Arpeggio><SequenceSetting preset="094 - m2 Down (2)"/></Layer>
	</Layers>
</Program>
</ProgramFile>
