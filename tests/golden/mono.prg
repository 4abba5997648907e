<ProgramFile><Program name="Mono"><Layers><Layer mono="true"/></Layers></Program></ProgramFile>
