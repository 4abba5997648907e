<?xml version="1.0" encoding="utf-8"?>
<ProgramFile>
<Program name="sequences" tempo="120" tempoSource="0">
	<Layers merge="false">
		<Layer channel="0"><SequenceSetting preset="002 - Oct 2 Up"/></Layer>
		<Layer channel="1"><SequenceSetting preset="031 - Seq 8" useNote="false"/></Layer>
		<Layer channel="2"><SequenceSetting preset="034 - Drums 1" useVelocity="false"/></Layer>
		<Layer channel="3" mono="true"><SequenceSetting preset="033 - Seq 10" useLength="false"/></Layer>
		<Layer channel="4"><SequenceSetting preset="Every Second"/></Layer>
		<Layer channel="5"><SequenceSetting preset="There is none"/></Layer>
	</Layers>
</Program>
</ProgramFile>
