<?xml version="1.0" encoding="utf-8"?>
<ProgramFile>
	<Program name="Split" tempo="120" tempoSource="0">
		<ComputerInput merge="false" useKeyUpMod="false"/>
		<Layers merge="false">
			<Layer maxNote="B3" output="1" channel="3" transpose="-12"/>
			<Layer minNote="C4" output="0" channel="4" velocity="+10" compress="1_2"/>
			<Layer minNote="C4" output="5" channel="1"/>
			<Layer mute="true" output="0" channel="9"/>
		</Layers>
	</Program>
</ProgramFile>
