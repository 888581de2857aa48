<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>WinDlgRlyCalMain</name>
    <message>
        <source>整定计算主界面</source>
        <translation>Setting Calculation</translation>
    </message>
    <message>
        <source>作业信息</source>
        <translation>Case</translation>
    </message>
    <message>
        <source>作业名:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>作业描述:</source>
        <translation>Description:</translation>
    </message>
    <message>
        <source>待整定保护类型:</source>
        <translation>Relay type to set:</translation>
    </message>
    <message>
        <source>待整定保护</source>
        <translation>Relays to set</translation>
    </message>
    <message>
        <source>基于潮流</source>
        <translation>On a load-flow case</translation>
    </message>
    <message>
        <source>潮流作业:</source>
        <translation>Load-flow case:</translation>
    </message>
    <message>
        <source>基础方案:</source>
        <translation>Base scheme:</translation>
    </message>
    <message>
        <source>一次值</source>
        <translation>Primary</translation>
    </message>
    <message>
        <source>二次值</source>
        <translation>Secondary</translation>
    </message>
    <message>
        <source>大运行方式</source>
        <translation>Maximum modes</translation>
    </message>
    <message>
        <source>小运行方式</source>
        <translation>Minimum modes</translation>
    </message>
    <message>
        <source>考虑整定的段</source>
        <translation>Stages to set</translation>
    </message>
    <message>
        <source>一段</source>
        <translation>Stage 1</translation>
    </message>
    <message>
        <source>二段</source>
        <translation>Stage 2</translation>
    </message>
    <message>
        <source>三段</source>
        <translation>Stage 3</translation>
    </message>
    <message>
        <source>四段</source>
        <translation>Stage 4</translation>
    </message>
    <message>
        <source>五段</source>
        <translation>Stage 5</translation>
    </message>
    <message>
        <source>增加</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>选择要整定的保护</source>
        <translation>Choose relays to be set</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Remove</translation>
    </message>
    <message>
        <source>从作业中去掉当前行的保护</source>
        <translation>Take the relay of the current row out of the case</translation>
    </message>
    <message>
        <source>整定原则</source>
        <translation>Setting Rules</translation>
    </message>
    <message>
        <source>当前行的保护采用哪些整定原则和参数</source>
        <translation>Which setting rules and parameters the relay of the current row uses</translation>
    </message>
    <message>
        <source>检修元件</source>
        <translation>Outages</translation>
    </message>
    <message>
        <source>分支系数</source>
        <translation>Branch Factors</translation>
    </message>
    <message>
        <source>选择运行方式</source>
        <translation>Choose Modes</translation>
    </message>
    <message>
        <source>选择大运行方式</source>
        <translation>Choose the maximum operating modes</translation>
    </message>
    <message>
        <source>选择小运行方式</source>
        <translation>Choose the minimum operating modes</translation>
    </message>
    <message>
        <source>手动计算</source>
        <translation>Manual Run</translation>
    </message>
    <message>
        <source>保存作业，逐个保护逐段计算</source>
        <translation>Saves the case and calculates stage by stage</translation>
    </message>
    <message>
        <source>自动计算</source>
        <translation>Automatic Run</translation>
    </message>
    <message>
        <source>保存作业，一次计算全部保护</source>
        <translation>Saves the case and calculates all relays at one go</translation>
    </message>
    <message>
        <source>保存定值</source>
        <translation>Save Settings</translation>
    </message>
    <message>
        <source>把新定值存为保护的定值</source>
        <translation>Make the new settings those of the relays</translation>
    </message>
    <message>
        <source>保存配合</source>
        <translation>Save Coordination</translation>
    </message>
    <message>
        <source>没有作业，请先增加一条记录</source>
        <translation>There is no case; insert a record first</translation>
    </message>
    <message>
        <source>作业中还没有保护</source>
        <translation>The case has no relays yet</translation>
    </message>
    <message>
        <source>不能编辑作业，原因见消息窗口</source>
        <translation>Cases cannot be edited; the message dock has the reason</translation>
    </message>
    <message>
        <source>作业的潮流作业已不存在，请重新选择</source>
        <translation>The load-flow case of this case is gone; choose another one</translation>
    </message>
    <message>
        <source>注意</source>
        <translation>Attention</translation>
    </message>
    <message>
        <source>从当前作业中删除已经不存在的保护吗？</source>
        <translation>Take relays that no longer exist out of the current case?</translation>
    </message>
    <message>
        <source>放弃打开窗口以来的全部修改和计算结果吗？</source>
        <translation>Discard all changes and results since the window was opened?</translation>
    </message>
    <message>
        <source>初始化计算数据...</source>
        <translation>Preparing the calculation...</translation>
    </message>
    <message>
        <source>确定计算顺序...</source>
        <translation>Finding the order of the relays...</translation>
    </message>
    <message>
        <source>中止</source>
        <translation>Abort</translation>
    </message>
</context>
</TS>
