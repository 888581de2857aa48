<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>RunProgress</name>
    <message>
        <source>警告: </source>
        <translation>Warning: </translation>
    </message>
    <message>
        <source>已用 </source>
        <translation>Elapsed </translation>
    </message>
    <message>
        <source>，预计还要 </source>
        <translation>, still about </translation>
    </message>
    <message>
        <source>计算程序仍在运行，已有 %1 秒没有消息。可以继续等待，或者按“中止计算”结束它。</source>
        <translation>The program is still running and has said nothing for %1 seconds. Wait on, or end it with “Stop”.</translation>
    </message>
    <message>
        <source>消息 %1 条，警告 %2 条</source>
        <translation>Messages: %1, warnings: %2</translation>
    </message>
    <message>
        <source>消息 %1 条</source>
        <translation>Messages: %1</translation>
    </message>
</context>
<context>
    <name>WinDlgRlyCal</name>
    <message>
        <source>正在计算。中止计算，放弃结果，关闭窗口？</source>
        <translation>A calculation is under way. Stop it, discard the results and close the window?</translation>
    </message>
    <message>
        <source>放弃本窗口中的计算结果和修改？</source>
        <translation>Discard the results and changes of this window?</translation>
    </message>
    <message>
        <source>生成计算书</source>
        <translation>Calculation Book</translation>
    </message>
    <message>
        <source>导出PDF…</source>
        <translation>Export PDF…</translation>
    </message>
    <message>
        <source>PDF文件 (*.pdf)</source>
        <translation>PDF files (*.pdf)</translation>
    </message>
    <message>
        <source>导出HTML…</source>
        <translation>Export HTML…</translation>
    </message>
    <message>
        <source>网页 (*.html)</source>
        <translation>Web pages (*.html)</translation>
    </message>
    <message>
        <source>导出计算书</source>
        <translation>Export Calculation Book</translation>
    </message>
    <message>
        <source>已写入 </source>
        <translation>Written: </translation>
    </message>
    <message>
        <source>计算窗口</source>
        <translation>Calculation</translation>
    </message>
    <message>
        <source>待整定保护</source>
        <translation>Relays to set</translation>
    </message>
    <message>
        <source>定值中间结果</source>
        <translation>Intermediate results</translation>
    </message>
    <message>
        <source>灵敏度校验结果</source>
        <translation>Sensitivity checks</translation>
    </message>
    <message>
        <source>灵敏度参量计算用运行方式</source>
        <translation>Modes for sensitivity parameters</translation>
    </message>
    <message>
        <source>选择运行方式</source>
        <translation>Choose Modes</translation>
    </message>
    <message>
        <source>计算灵敏度参量</source>
        <translation>Calculate Sensitivity Parameters</translation>
    </message>
    <message>
        <source>换用另一参量</source>
        <translation>Use Other Parameter</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>图形</source>
        <translation>Pictures</translation>
    </message>
    <message>
        <source>保护安装位置</source>
        <translation>Relay location</translation>
    </message>
    <message>
        <source>定值名称</source>
        <translation>Setting</translation>
    </message>
    <message>
        <source>段号</source>
        <translation>Stage</translation>
    </message>
    <message>
        <source>整定原则</source>
        <translation>Setting rule</translation>
    </message>
    <message>
        <source>定值结果</source>
        <translation>Result</translation>
    </message>
    <message>
        <source>参数修改</source>
        <translation>Parameters</translation>
    </message>
    <message>
        <source>灵敏度</source>
        <translation>Sensitivity</translation>
    </message>
    <message>
        <source>参量一描述</source>
        <translation>Parameter one is</translation>
    </message>
    <message>
        <source>参量一</source>
        <translation>Parameter one</translation>
    </message>
    <message>
        <source>参量二描述</source>
        <translation>Parameter two is</translation>
    </message>
    <message>
        <source>参量二</source>
        <translation>Parameter two</translation>
    </message>
    <message>
        <source>不能备份工作表，本窗口不能计算</source>
        <translation>The working tables cannot be copied, so this window cannot calculate</translation>
    </message>
    <message>
        <source>最近输入的定值无效，请先改正</source>
        <translation>The setting typed last is not valid; correct it first</translation>
    </message>
    <message>
        <source>正在计算</source>
        <translation>A calculation is under way</translation>
    </message>
    <message>
        <source>计算书的其他格式</source>
        <translation>The calculation book in other formats</translation>
    </message>
    <message>
        <source>开始</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>完成</source>
        <translation>Finish</translation>
    </message>
    <message>
        <source>下一步</source>
        <translation>Next</translation>
    </message>
    <message>
        <source>中止计算</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>计算灵敏度参量...</source>
        <translation>Calculating sensitivity parameters...</translation>
    </message>
    <message>
        <source>准备计算...</source>
        <translation>Preparing the calculation...</translation>
    </message>
    <message>
        <source>正在中止...</source>
        <translation>Stopping...</translation>
    </message>
    <message>
        <source>重新计算 </source>
        <translation>Recalculating </translation>
    </message>
    <message>
        <source>计算 </source>
        <translation>Calculating </translation>
    </message>
    <message>
        <source>重新计算结束</source>
        <translation>Recalculation finished</translation>
    </message>
    <message>
        <source>计算完成</source>
        <translation>Calculation finished</translation>
    </message>
    <message>
        <source>计算已中止</source>
        <translation>Calculation stopped</translation>
    </message>
    <message>
        <source>，%1 次计算程序没有正常结束</source>
        <translation>; engine runs that ended badly: %1</translation>
    </message>
    <message>
        <source>没有结果的原则（%1）</source>
        <translation>Rules without result (%1)</translation>
    </message>
    <message>
        <source>定值没有存入，请改正: </source>
        <translation>The setting was not stored, please correct it: </translation>
    </message>
    <message>
        <source>不能备份工作表，本窗口不能计算，原因见消息窗口</source>
        <translation>The working tables cannot be copied, so this window cannot calculate; the messages have the reason</translation>
    </message>
    <message>
        <source>工作表没有恢复，原因见消息窗口。关闭窗口，下次打开工程时再恢复？</source>
        <translation>The working tables were not restored; the messages have the reason. Close the window and restore them when the project is opened next?</translation>
    </message>
    <message>
        <source>计算没有开始，原因见消息窗口</source>
        <translation>The calculation did not start; the messages have the reason</translation>
    </message>
    <message>
        <source>计算没有完成，原因见消息窗口</source>
        <translation>The calculation did not finish; the messages have the reason</translation>
    </message>
    <message>
        <source>没有写入，原因见消息窗口: </source>
        <translation>Not written, the messages have the reason: </translation>
    </message>
    <message>
        <source> %1 段: 请查看结果，可以修改，然后按“下一步”</source>
        <translation> part %1: review the results, change them if need be, then press “Next”</translation>
    </message>
</context>
</TS>
